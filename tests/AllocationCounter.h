#pragma once

#include <cstdint>

namespace keyrow {

/// How many pieces of memory this thread has taken from the heap so far.
std::uint64_t allocationCount();

}  // namespace keyrow
