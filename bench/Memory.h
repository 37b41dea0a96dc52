#pragma once

#include <cstdint>
#include <optional>

namespace keyrow::sim {

/// The most memory that this process has used so far, in bytes.
std::uint64_t peakMemory();

/// The memory that this process uses now, in bytes; absent where the system does not tell.
std::optional<std::uint64_t> currentMemory();

}  // namespace keyrow::sim
