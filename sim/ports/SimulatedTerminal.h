#pragma once

#include <string_view>

#include "platform/Terminal.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// Where a command-line program's lines go: to the timeline, as if they were piped.
class SimulatedTerminal final : public Terminal {
 public:
  explicit SimulatedTerminal(Timeline& timeline) : timeline_{timeline} {}

  void print(std::string_view line) override {
    timeline_.add(TimelineEvent::Kind::output, {quoted(line)});
  }
  void printError(std::string_view line) override {
    timeline_.add(TimelineEvent::Kind::output, {"error", quoted(line)});
  }
  bool isInteractive() override { return false; }

 private:
  Timeline& timeline_;
};

}  // namespace keyrow::sim
