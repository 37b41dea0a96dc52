#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/EventTaps.h"
#include "sim/machine/OpenHandles.h"
#include "sim/machine/SimulatedRunLoop.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// An event tap as the window server knows it. Its fields belong to the server.
struct ServedTap {
  std::uint64_t eventsOfInterest = 0;
  EventTapCallback* callback = nullptr;
  bool isEnabled = true;
  bool isValid = true;
  /// Where its events are handled; null before a run loop serves its source.
  std::shared_ptr<SimulatedRunLoop> runLoop;
};

/// The window server's event taps, in the order in which events pass them: the newest
/// first. Safe to use from any thread.
class EventTapServer {
 public:
  explicit EventTapServer(Timeline& timeline) : timeline_{timeline} {}

  void insert(std::shared_ptr<ServedTap> tap);
  void setEnabled(ServedTap& tap, bool enabled);
  bool isEnabled(const ServedTap& tap) const;
  void serve(ServedTap& tap, std::shared_ptr<SimulatedRunLoop> runLoop);
  void invalidate(ServedTap& tap);

  /// Lets an event pass the taps, each in its own thread; whether it gets through.
  bool post(std::uint32_t type, const KeyEvent& event);

  /// Disables all taps; with a type, the system tells them so.
  void disableAll(std::uint32_t announcedType);

  /// How often a tap has come, gone, or been enabled or disabled.
  std::uint64_t changeCount() const { return changeCount_; }

  /// How many taps there are that are valid and enabled.
  int enabledCount() const;

 private:
  std::vector<std::shared_ptr<ServedTap>> valid() const;
  /// Puts on the timeline whether a tap works, where that has changed.
  void tell();

  Timeline& timeline_;
  std::atomic<std::uint64_t> changeCount_{0};

  /// Guards the fields below and those of the taps.
  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<ServedTap>> taps_;
  bool isWorking_ = false;
};

}  // namespace keyrow::sim
