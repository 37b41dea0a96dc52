#pragma once

#include <string_view>

namespace keyrow {

/// Why the function-key mode could not be carried to or from the hardware.
enum class KeyboardControllerError { readFailed, writeFailed };

/// The error in words, for log lines and alerts.
constexpr std::string_view errorDescription(KeyboardControllerError error) {
  return error == KeyboardControllerError::readFailed ? "Failed to read the function key mode."
                                                      : "Failed to write the function key mode.";
}

}  // namespace keyrow
