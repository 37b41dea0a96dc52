#pragma once

#include <string_view>

#include "platform/Terminal.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// Where a command-line program's lines go: to the timeline, as if they were piped.
class SimulatedTerminal final : public Terminal {
 public:
  explicit SimulatedTerminal(SimulatedMac& mac) : mac_{mac} {}

  bool print(std::string_view line) override {
    if (!mac_.call(PortCall::writeOutput)) return false;
    mac_.timeline.add(TimelineEvent::Kind::output, {quoted(line)});
    return true;
  }
  void printError(std::string_view line) override {
    mac_.timeline.add(TimelineEvent::Kind::output, {"error", quoted(line)});
  }
  bool isInteractive() override { return false; }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
