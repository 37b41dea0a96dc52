#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Clock.h"

namespace keyrow::fuzz {

/// When an event happened, in ticks: what lies in the future by more than a second is nanoseconds.
inline std::uint64_t ticksOf(std::uint64_t timestamp, std::uint64_t now, MachTimebase timebase) {
  if (timebase.numer == 0) return timestamp;
  const auto converted = [&](unsigned __int128 nanoseconds) {
    return static_cast<std::uint64_t>(nanoseconds * timebase.denom / timebase.numer);
  };
  const bool isFuture = timestamp > now && timestamp - now > converted(1'000'000'000);
  return isFuture ? converted(timestamp) : timestamp;
}

/// Which keyboard a key event comes from, found without any haste: what the source monitor
/// has to answer, too.
class ExpectedSources {
 public:
  explicit ExpectedSources(MachTimebase timebase)
      : matchWindow{ticks(80'000'000, timebase, 20'000'000)},
        singleWindow{ticks(250'000'000, timebase, 250'000'000)} {}

  /// The largest distances at which one of several samples, and a single one, count.
  const std::uint64_t matchWindow;
  const std::uint64_t singleWindow;

  void input(std::uint64_t timestamp, std::uint32_t keyboard) {
    constexpr std::size_t most = 64;
    if (samples.size() == most) samples.erase(samples.begin());
    samples.push_back({timestamp, keyboard});
  }

  void clear() { samples.clear(); }

  /// The keyboard of an event at this time. Samples that are much older are forgotten.
  std::optional<std::uint32_t> at(std::uint64_t timestamp) {
    std::erase_if(samples, [&](const Sample& sample) {
      return sample.timestamp < timestamp && timestamp - sample.timestamp > 4 * matchWindow;
    });
    if (samples.empty()) return std::nullopt;
    const auto distance = [timestamp](const Sample& sample) {
      return std::max(timestamp, sample.timestamp) - std::min(timestamp, sample.timestamp);
    };
    const auto nearest = std::ranges::min_element(samples, {}, distance);
    const auto window = samples.size() == 1 ? std::max(matchWindow, singleWindow) : matchWindow;
    return distance(*nearest) <= window ? std::optional{nearest->keyboard} : std::nullopt;
  }

 private:
  struct Sample {
    std::uint64_t timestamp;
    std::uint32_t keyboard;
  };

  static std::uint64_t ticks(std::uint64_t nanoseconds, MachTimebase timebase,
                             std::uint64_t withoutTimebase) {
    return timebase.numer == 0 ? withoutTimebase : nanoseconds * timebase.denom / timebase.numer;
  }

  /// In the order of their arrival.
  std::vector<Sample> samples;
};

}  // namespace keyrow::fuzz
