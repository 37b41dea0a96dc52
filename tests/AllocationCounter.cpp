#include "tests/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t count = 0;

void* allocate(std::size_t size) {
  ++count;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc{};
}

}  // namespace

std::uint64_t keyrow::allocationCount() { return count; }

// All other forms of new and delete come down to these.
void* operator new(std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
