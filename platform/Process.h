#pragma once

#include <cstdint>
#include <string>

#include "platform/Port.h"

namespace keyrow {

/// This process (`NSProcessInfo`).
class Process : public Port {
 public:
  /// `processIdentifier`.
  virtual std::int32_t processIdentifier() = 0;

  /// The version of macOS as people read it (`operatingSystemVersionString`).
  virtual std::string operatingSystemVersion() = 0;
};

}  // namespace keyrow
