#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace keyrow {

/// Why the mode is being mirrored into the system preference.
enum class FnStatePersistReason {
  instanceTakeover = 0,
  applicationTermination = 1,
  systemSleep = 2,
  /// Nothing is logged on success.
  quiet = 3,
};

/// The reason as the success line names it; empty for `quiet`.
constexpr std::string_view persistReasonText(FnStatePersistReason reason) {
  constexpr std::array<std::string_view, 4> texts{"instance takeover", "application termination",
                                                  "system sleep", ""};
  return texts[static_cast<std::size_t>(reason)];
}

}  // namespace keyrow
