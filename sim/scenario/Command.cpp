#include "sim/scenario/Command.h"

#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

std::array<std::span<const Command>, 5> actions() {
  return {machineCommands(), keyCommands(), desktopCommands(), paneCommands(), keyrowCommands()};
}

std::array<std::span<const Command>, 4> expectations() {
  return {stateExpectations(), desktopExpectations(), keyExpectations(), paneExpectations()};
}

Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  return unmet("expected " + std::string{what} + " to be " + expected + ", but it is " + actual);
}

Outcome expectEvent(Stage& stage, TimelineEvent::Kind kind, const std::optional<std::string>& text,
                    std::string_view where) {
  std::string seen;
  for (const auto& event : stage.recentTimeline()) {
    if (event.kind != kind) continue;
    if (text && event.text == *text) return {};
    seen += "\n    " + event.text;
  }
  if (!text && seen.empty()) return {};
  return unmet("expected " + (text ? quoted(*text) : "nothing") + " " + std::string{where} +
               ", but there is" + (seen.empty() ? " nothing" : seen));
}

Outcome unmet(std::string message) { return {Outcome::Kind::unmet, std::move(message)}; }

Outcome unplayable(std::string message) { return {Outcome::Kind::unplayable, std::move(message)}; }

Outcome keyrowNotRunning() { return unplayable("Keyrow is not running"); }

}  // namespace keyrow::sim
