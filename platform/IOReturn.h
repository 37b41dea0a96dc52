#pragma once

#include <cstdint>

namespace keyrow {

/// A result code of IOKit (`IOReturn`, `kern_return_t`).
using IOReturn = std::int32_t;

/// `kIOReturnSuccess` (IOReturn.h); every other code is a failure.
inline constexpr IOReturn ioReturnSuccess = 0;

}  // namespace keyrow
