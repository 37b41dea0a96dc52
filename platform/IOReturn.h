#pragma once

#include <cstdint>

namespace keyrow {

/// A result code of IOKit (`IOReturn`, `kern_return_t`).
using IOReturn = std::int32_t;

/// `kIOReturnSuccess` (IOReturn.h); every other code is a failure.
inline constexpr IOReturn ioReturnSuccess = 0;
/// `kIOReturnExclusiveAccess`: another program has the device to itself.
inline constexpr IOReturn ioReturnExclusiveAccess = static_cast<IOReturn>(0xE00002C5);

}  // namespace keyrow
