#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace keyrow {

/// An error that the platform reported (`NSError`).
struct SystemError {
  /// A text made for people; absent when the error brings none of its own.
  std::optional<std::string> errorDescription;
  /// Who defined the code, for example "NSOSStatusErrorDomain".
  std::string domain;
  std::int64_t code = 0;
};

/// The error in words: the text that it brings, or else its domain and its code.
inline std::string errorText(const SystemError& error) {
  if (error.errorDescription && !error.errorDescription->empty()) return *error.errorDescription;
  return error.domain + " (" + std::to_string(error.code) + ")";
}

}  // namespace keyrow
