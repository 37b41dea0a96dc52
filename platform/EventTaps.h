#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/KeyEvent.h"
#include "platform/Port.h"

namespace keyrow {

/// What becomes of a tapped event.
enum class TapVerdict {
  /// It goes on as it is.
  pass,
  /// It goes nowhere.
  swallow,
};

/// What a tap calls.
class EventTapCallback {
 public:
  /// Called in the tap's worker thread for every event, which waits in the system's path
  /// until this returns. `type` is one of `keyEventType`, or whatever else comes; of the
  /// pseudo events that say that the tap was disabled `event` tells nothing.
  virtual TapVerdict tapReceived(std::uint32_t type, const KeyEvent& event) noexcept = 0;

 protected:
  ~EventTapCallback() = default;
};

/// An event tap (`CFMachPort`). Destroying it releases it, and does not invalidate it.
class EventTap : public Port {
 public:
  /// `CGEventTapEnable`.
  virtual void setEnabled(bool enabled) = 0;
  /// `CGEventTapIsEnabled`.
  virtual bool isEnabled() = 0;
  /// Ends it for good (`CFMachPortInvalidate`).
  virtual void invalidate() = 0;
};

/// What brings a tap's events to a run loop (`CFRunLoopSource`). Destroying it releases it.
class RunLoopSource : public Port {};

/// A thread's run loop (`CFRunLoop`); all in the common modes. Safe to call from any
/// thread, except `run`.
class RunLoop : public Port {
 public:
  virtual void addSource(RunLoopSource& source) = 0;
  virtual void removeSource(RunLoopSource& source) = 0;

  /// Serves the sources until the run loop is stopped (`CFRunLoopRun`); in its own thread.
  virtual void run() = 0;

  /// Lets it do something in its own thread, as soon as it runs (`CFRunLoopPerformBlock`,
  /// `CFRunLoopWakeUp`).
  virtual void perform(std::function<void()> work) = 0;

  /// Lets it stop itself, from its own thread, as soon as it runs (`CFRunLoopPerformBlock`
  /// with `CFRunLoopStop`, `CFRunLoopWakeUp`).
  virtual void stop() = 0;
};

/// Quartz event taps, and the threads that serve them.
class EventTaps : public Port {
 public:
  /// Creates an active tap for these events, a bit for each type, before all others at the
  /// point where HID events enter the window server (`CGEventTapCreate` with
  /// `kCGHIDEventTap`, `kCGHeadInsertEventTap`, `kCGEventTapOptionDefault`). Null when the
  /// system does not allow it. `callback` has to live as long as a run loop serves the tap.
  virtual std::shared_ptr<EventTap> createTap(std::uint64_t eventsOfInterest,
                                              EventTapCallback& callback) = 0;

  /// `CFMachPortCreateRunLoopSource` with order 0; null when that fails.
  virtual std::shared_ptr<RunLoopSource> createRunLoopSource(EventTap& tap) = 0;

  /// The run loop of the thread that asks (`CFRunLoopGetCurrent`).
  virtual std::shared_ptr<RunLoop> currentRunLoop() = 0;

  /// Runs `body` in a thread of its own, of that name and with the quality of service
  /// user-interactive (`NSQualityOfServiceUserInteractive`).
  virtual void startThread(std::string_view name, std::function<void()> body) = 0;
};

}  // namespace keyrow
