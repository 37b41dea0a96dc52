#include "tests/AllocationCounter.h"

#include <cstdlib>
#include <new>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KEYROW_THREAD_SANITIZER
#endif
#endif

namespace {

thread_local std::uint64_t count = 0;

}  // namespace

std::uint64_t keyrow::allocationCount() { return count; }

#ifdef KEYROW_THREAD_SANITIZER

bool keyrow::areAllocationsCounted() { return false; }

#else

bool keyrow::areAllocationsCounted() { return true; }

// All other forms of new and delete come down to these.
void* operator new(std::size_t size) {
  ++count;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc{};
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#endif
