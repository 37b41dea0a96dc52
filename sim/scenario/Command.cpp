#include "sim/scenario/Command.h"

namespace keyrow::sim {

std::array<std::span<const Command>, 3> actions() {
  return {machineCommands(), desktopCommands(), keyrowCommands()};
}

std::array<std::span<const Command>, 2> expectations() {
  return {stateExpectations(), desktopExpectations()};
}

Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  return unmet("expected " + std::string{what} + " to be " + expected + ", but it is " + actual);
}

Outcome unmet(std::string message) { return {Outcome::Kind::unmet, std::move(message)}; }

Outcome unplayable(std::string message) { return {Outcome::Kind::unplayable, std::move(message)}; }

Outcome keyrowNotRunning() { return unplayable("Keyrow is not running"); }

}  // namespace keyrow::sim
