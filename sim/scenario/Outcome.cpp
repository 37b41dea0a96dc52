#include "sim/scenario/Outcome.h"

#include <utility>

namespace keyrow::sim {

Outcome unmet(std::string message) { return {Outcome::Kind::unmet, std::move(message)}; }

Outcome unplayable(std::string message) { return {Outcome::Kind::unplayable, std::move(message)}; }

Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  return unmet("expected " + std::string{what} + " to be " + expected + ", but it is " + actual);
}

}  // namespace keyrow::sim
