#pragma once

#include <optional>
#include <string>

#include "platform/Port.h"

namespace keyrow {

/// The application's main bundle (`NSBundle`).
class Bundle : public Port {
 public:
  /// The bundle identifier; absent when the bundle has none.
  virtual std::optional<std::string> identifier() = 0;
};

}  // namespace keyrow
