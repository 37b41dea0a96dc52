#pragma once

#include <cstdint>

#include "platform/Port.h"

namespace keyrow {

/// This process (`NSProcessInfo`).
class Process : public Port {
 public:
  /// `processIdentifier`.
  virtual std::int32_t processIdentifier() = 0;
};

}  // namespace keyrow
