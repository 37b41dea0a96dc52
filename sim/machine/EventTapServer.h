#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/EventTaps.h"
#include "sim/machine/OpenHandles.h"
#include "sim/machine/Scheduler.h"
#include "sim/machine/SimulatedRunLoop.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// A key event on its way.
struct WaitingKey {
  std::uint32_t type;
  KeyEvent event;
};

/// An event tap as the window server knows it. Its fields belong to the server.
struct ServedTap {
  std::uint64_t eventsOfInterest = 0;
  EventTapCallback* callback = nullptr;
  bool isEnabled = true;
  bool isValid = true;
  /// Where its events are handled; null before a run loop serves its source.
  std::shared_ptr<SimulatedRunLoop> runLoop;
  /// Those that it stalls, and when that is taken for a timeout.
  std::vector<WaitingKey> stalledKeys;
  Scheduler::Ticket timeout;
};

/// The window server's event taps, in the order in which events pass them: the newest
/// first. Safe to use from any thread.
///
/// An enabled tap whose process is not trusted stalls every key, until it is disabled or
/// gone: by its process, or by the system, which does that after 30 s.
class EventTapServer {
 public:
  struct Uses {
    Timeline& timeline;
    Scheduler& scheduler;
    const std::atomic<bool>& isProcessTrusted;
    /// What becomes of the keys that were stalled, in the thread that runs the machine.
    std::function<void(std::uint32_t type, const KeyEvent& event, bool getsThrough)> decided;
  };

  explicit EventTapServer(Uses uses) : use_{std::move(uses)} {}

  void insert(std::shared_ptr<ServedTap> tap);
  void setEnabled(ServedTap& tap, bool enabled);
  bool isEnabled(const ServedTap& tap) const;
  void serve(ServedTap& tap, std::shared_ptr<SimulatedRunLoop> runLoop);
  void invalidate(ServedTap& tap);

  /// Lets an event pass the taps, each in its own thread; whether it gets through. Absent while it
  /// is stalled, which `decided` ends.
  std::optional<bool> post(std::uint32_t type, const KeyEvent& event) {
    return pass(valid(), type, event);
  }

  /// Disables all taps; with a type, the system tells them so.
  void disableAll(std::uint32_t announcedType);

  /// Tells the taps of a run loop that is about to be stopped that they were disabled: their
  /// process does that next, and their callbacks may hear of it before the run loop stops.
  void announceStop(const SimulatedRunLoop& runLoop);

  /// How often a tap has come, gone, been enabled or disabled, or begun to stall the keys.
  std::uint64_t changeCount() const { return changeCount_; }

  /// How many taps there are that are valid and enabled.
  int enabledCount() const;

  /// How many keys are stalled.
  std::size_t stalledCount() const;

  /// "stalled" while keys are, otherwise "working" or "missing".
  std::string state() const;

 private:
  using Taps = std::vector<std::shared_ptr<ServedTap>>;

  Taps valid() const;
  std::optional<bool> pass(const Taps& taps, std::uint32_t type, const KeyEvent& event);
  void disable(ServedTap& tap, std::uint32_t announcedType);

  // With the mutex held:

  void stall(const std::shared_ptr<ServedTap>& tap, std::uint32_t type, const KeyEvent& event);
  /// Lets the keys go on that a tap stalls.
  void letGo(ServedTap& tap);
  std::string currentState() const;
  /// Puts on the timeline whether a tap works, where that has changed.
  void tell();

  const Uses use_;
  std::atomic<std::uint64_t> changeCount_{0};

  /// Guards the fields below and those of the taps.
  mutable std::mutex mutex_;
  Taps taps_;
  std::string toldState_ = "missing";
};

}  // namespace keyrow::sim
