#pragma once

#include <cstdint>

namespace keyrow {

/// How many pieces of memory this thread has taken from the heap so far.
std::uint64_t allocationCount();

/// Whether they are counted: not with the thread sanitizer, which has its own operator new.
bool areAllocationsCounted();

}  // namespace keyrow
