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

}  // namespace keyrow
