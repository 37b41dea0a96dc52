#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace keyrow::sim {

/// Counts durations in buckets that grow with them, each at most a 32nd of its durations
/// wide. The size is fixed, so that counting takes no memory.
class LatencyHistogram {
 public:
  void add(std::uint64_t nanoseconds) {
    ++counts_[bucketOf(nanoseconds)];
    ++total_;
    maximum_ = std::max(maximum_, nanoseconds);
  }

  /// The nanoseconds that so many of a thousand durations do not exceed; 0 without any.
  std::uint64_t perMille(std::uint64_t share) const {
    const auto wanted = (total_ * share + 999) / 1000;
    std::uint64_t seen = 0;
    for (std::size_t bucket = 0; bucket < counts_.size(); ++bucket) {
      seen += counts_[bucket];
      if (seen >= wanted) return std::min(largestIn(bucket), maximum_);
    }
    return maximum_;
  }

  std::uint64_t maximum() const { return maximum_; }

 private:
  /// A bucket's number is how far a duration is shifted to the right to have six digits, and
  /// then these digits. Below 64 each duration has a bucket of its own.
  static constexpr int digits = 6;
  static constexpr std::size_t bucketsPerShift = std::size_t{1} << (digits - 1);
  static constexpr std::size_t bucketCount = (64 - digits + 2) * bucketsPerShift;

  static std::size_t bucketOf(std::uint64_t nanoseconds) {
    const auto shift =
        static_cast<unsigned>(std::max(0, static_cast<int>(std::bit_width(nanoseconds)) - digits));
    return shift * bucketsPerShift + static_cast<std::size_t>(nanoseconds >> shift);
  }

  static std::uint64_t largestIn(std::size_t bucket) {
    const auto shift = std::max<std::size_t>(bucket / bucketsPerShift, 1) - 1;
    return ((std::uint64_t{bucket - shift * bucketsPerShift} + 1) << shift) - 1;
  }

  std::array<std::uint64_t, bucketCount> counts_{};
  std::uint64_t total_ = 0;
  std::uint64_t maximum_ = 0;
};

}  // namespace keyrow::sim
