#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <mutex>
#include <set>

#include "sim/machine/PortCall.h"

namespace keyrow::sim {

/// Which port calls fail. Every call that can fail asks here first. Safe to use from
/// any thread.
class Faults {
 public:
  static constexpr std::uint64_t always = std::numeric_limits<std::uint64_t>::max();

  /// Lets the next `times` calls fail, after `passing` calls that still work, in place of
  /// what was planned for this call before.
  void fail(PortCall call, std::uint64_t times, std::uint64_t passing = 0);

  /// Lets just these calls of all fail, counted from 1 and from the start of the machine.
  void failOverallCalls(std::set<std::uint64_t> numbers);

  /// Lets every call work again, save those that `failOverallCalls` named.
  void repair();

  /// Lets every call work again.
  void clear();

  /// Counts a call, and tells whether it is to fail.
  bool strikes(PortCall call);

  /// Whether the next call of this kind is planned to fail. Asking does not count as a call.
  bool isNextToFail(PortCall call) const;

  /// How many more calls of this kind will fail; 0 when none is to.
  std::uint64_t failuresLeft(PortCall call) const;

  /// How many calls have asked so far.
  std::uint64_t overallCallCount() const;

  /// How many calls of this kind have asked so far.
  std::uint64_t callCount(PortCall call) const;

 private:
  struct Plan {
    std::uint64_t passing = 0;
    std::uint64_t failing = 0;
    /// How many calls have asked, in all.
    std::uint64_t asked = 0;
  };

  /// Guards all fields.
  mutable std::mutex mutex_;
  std::array<Plan, portCalls.size()> plans_{};
  std::uint64_t overallCount_ = 0;
  std::set<std::uint64_t> failingOverallCalls_;
};

}  // namespace keyrow::sim
