#pragma once

#include <string>

#include "sim/ports/SimulatedPane.h"
#include "ui/AboutView.h"

namespace keyrow::sim {

/// The About pane on the simulated Mac.
class SimulatedAboutView final : public SimulatedPane<AboutView> {
 public:
  using SimulatedPane::SimulatedPane;

  void setVersion(std::string_view text) override { version = text; }

  std::string version;

 private:
  std::vector<Clickable> clickables() const override;
  double neededHeight() const override;
};

}  // namespace keyrow::sim
