#include "bench/Memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace keyrow::sim {

std::uint64_t peakMemory() {
#ifdef __APPLE__
  constexpr std::uint64_t unit = 1;
#else
  constexpr std::uint64_t unit = 1024;
#endif
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  // The kernel keeps the two figures apart, and this one may lag behind.
  return std::max(static_cast<std::uint64_t>(usage.ru_maxrss) * unit, currentMemory().value_or(0));
}

std::optional<std::uint64_t> currentMemory() {
  std::ifstream file{"/proc/self/statm"};
  std::uint64_t size = 0;
  std::uint64_t resident = 0;
  if (!(file >> size >> resident)) return std::nullopt;
  return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace keyrow::sim
