#pragma once

#include <cstdint>

namespace keyrow::reliability {

/// Plays random sessions until at least so many lines have been played, and prints how many
/// those were; on a terminal also how far it is. False when a promise was broken: then it
/// has printed the shortest session that it found, as a scenario that can be played.
bool soak(std::uint64_t steps, std::uint64_t seed);

}  // namespace keyrow::reliability
