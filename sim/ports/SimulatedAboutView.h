#pragma once

#include <string>

#include "sim/ports/ProcessContext.h"
#include "ui/AboutView.h"

namespace keyrow::sim {

/// The controls of the About pane, and the user's hands on them.
class SimulatedAboutView final : public AboutView {
 public:
  explicit SimulatedAboutView(const ProcessContext& context) : context_{context} {}

  void setVersion(std::string_view text) override { version = text; }
  void setEnhancedDiagnosticsChecked(bool checked) override {
    isEnhancedDiagnosticsChecked = checked;
  }
  void setAutoUpdateChecked(bool checked) override { isAutoUpdateChecked = checked; }

  /// The pane is looked at for the first time.
  void load();

  /// The user clicks the control with this title; false when there is none.
  bool click(std::string_view title);

  std::string version;
  bool isEnhancedDiagnosticsChecked = false;
  bool isAutoUpdateChecked = false;

 private:
  const ProcessContext& context_;
  bool isLoaded_ = false;
};

}  // namespace keyrow::sim
