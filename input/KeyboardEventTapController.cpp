#include "input/KeyboardEventTapController.h"

#include <chrono>
#include <string>
#include <utility>

#include "core/AppIdentifier.h"
#include "input/InputLogTexts.h"

namespace keyrow {

namespace {

consteval std::uint64_t eventMask(std::uint32_t type) { return std::uint64_t{1} << type; }

constexpr std::uint64_t eventsOfInterest = eventMask(keyEventType::keyDown) |
                                           eventMask(keyEventType::keyUp) |
                                           eventMask(keyEventType::flagsChanged);

/// How long the end of the application waits for its workers.
constexpr auto longestWaitForWorkers = std::chrono::seconds{2};

bool isAnnouncement(std::uint32_t eventType) {
  return eventType == keyEventType::tapDisabledByTimeout ||
         eventType == keyEventType::tapDisabledByUserInput;
}

std::string reasonText(std::uint32_t eventType) {
  if (eventType == keyEventType::tapDisabledByTimeout) return "timeout";
  if (eventType == keyEventType::tapDisabledByUserInput) return "user input";
  return "event type " + std::to_string(eventType);
}

}  // namespace

/// What one tap calls, in its thread: hands the events on, and answers the announcements.
class KeyboardEventTapController::Worker final : public EventTapCallback,
                                                 public std::enable_shared_from_this<Worker> {
 public:
  Worker(KeyboardEventTapController& controller, std::shared_ptr<TappedEventHandler> handler)
      : controller_{controller}, handler_{std::move(handler)} {}

  TapVerdict tapReceived(std::uint32_t type, const KeyEvent& event) noexcept override {
    if (!isAnnouncement(type)) return handler_->handleTappedEvent(type, event);
    handler_->forgetKeys();
    controller_.use_.mainQueue.async([&controller = controller_, type, self = weak_from_this()] {
      controller.handleAnnouncement(type, self.lock());
    });
    return TapVerdict::swallow;
  }

  void forgetKeys() noexcept { handler_->forgetKeys(); }

 private:
  KeyboardEventTapController& controller_;
  const std::shared_ptr<TappedEventHandler> handler_;
};

void KeyboardEventTapController::stopEventTap() {
  std::shared_ptr<EventTap> tap;
  std::shared_ptr<RunLoopSource> source;
  std::shared_ptr<Worker> worker;
  std::shared_ptr<RunLoop> runLoop;
  {
    const std::scoped_lock guard{state_->stateLock};
    tap = std::exchange(state_->eventTap, nullptr);
    source = std::exchange(state_->runLoopSource, nullptr);
    worker = std::exchange(state_->worker, nullptr);
    runLoop = std::exchange(state_->workerRunLoop, nullptr);
  }
  if (runLoop) runLoop->stop();
  if (!tap) return;
  tap->setEnabled(false);
  tap->invalidate();
}

void KeyboardEventTapController::stopEventTapAndWait() {
  stopEventTap();
  std::unique_lock guard{state_->stateLock};
  state_->workerEnded.wait_for(guard, longestWaitForWorkers,
                               [this] { return state_->workerCount == 0; });
}

bool KeyboardEventTapController::reviveEventTap() {
  if (enableExistingTap()) return true;
  stopEventTap();
  return startEventTap();
}

bool KeyboardEventTapController::recoverEventTap(std::uint32_t eventType) {
  const auto reason = reasonText(eventType) + ".";
  if (enableExistingTap()) {
    use_.inputLog.notice("Re-enabled the keyboard event tap after " + reason);
    return true;
  }
  stopEventTap();
  if (startEventTap()) {
    use_.inputLog.notice("Rebuilt the keyboard event tap after " + reason);
    return true;
  }
  use_.inputLog.error(std::string{inputLogText::failedToRecoverTap} + reason);
  return false;
}

void KeyboardEventTapController::handleAnnouncement(std::uint32_t eventType,
                                                    const std::shared_ptr<Worker>& from) {
  // A tap that was stopped may still be announced as disabled, when a new one works already.
  const bool isCurrent = [&] {
    const std::scoped_lock guard{state_->stateLock};
    return from && state_->worker == from;
  }();
  if (isCurrent) use_.tapWasDisabled(eventType);
}

bool KeyboardEventTapController::startEventTap() {
  if (enableExistingTap()) return true;

  auto worker = std::make_shared<Worker>(*this, use_.makeHandler());
  auto tap = use_.eventTaps.createTap(eventsOfInterest, *worker);
  if (!tap) return false;
  auto source = use_.eventTaps.createRunLoopSource(*tap);
  if (!source) {
    tap->invalidate();
    return false;
  }
  // What is replaced is released out of the lock.
  auto oldTap = tap;
  auto oldSource = source;
  auto oldWorker = worker;
  {
    const std::scoped_lock guard{state_->stateLock};
    oldTap = std::exchange(state_->eventTap, tap);
    oldSource = std::exchange(state_->runLoopSource, source);
    oldWorker = std::exchange(state_->worker, worker);
    ++state_->workerCount;
  }
  // The worker enables the tap when it is ready for it.
  use_.eventTaps.startThread(
      std::string{appIdentifier} + ".KeyboardEventTap",
      [weakState = std::weak_ptr{state_}, &eventTaps = use_.eventTaps, tap = std::move(tap),
       source = std::move(source), worker = std::move(worker)] {
        runTapThread(weakState, eventTaps, tap, source, *worker);
        const auto state = weakState.lock();
        if (!state) return;
        const std::scoped_lock guard{state->stateLock};
        --state->workerCount;
        state->workerEnded.notify_all();
      });
  return true;
}

bool KeyboardEventTapController::enableExistingTap() {
  std::shared_ptr<EventTap> tap;
  std::shared_ptr<Worker> worker;
  std::shared_ptr<RunLoop> runLoop;
  {
    const std::scoped_lock guard{state_->stateLock};
    tap = state_->eventTap;
    worker = state_->worker;
    runLoop = state_->workerRunLoop;
  }
  if (!tap) return false;
  // What passed while it was disabled nobody has seen.
  if (runLoop && !tap->isEnabled()) runLoop->perform([worker] { worker->forgetKeys(); });
  tap->setEnabled(true);
  return tap->isEnabled();
}

void KeyboardEventTapController::runTapThread(const std::weak_ptr<State>& weakState,
                                              EventTaps& eventTaps,
                                              const std::shared_ptr<EventTap>& tap,
                                              const std::shared_ptr<RunLoopSource>& source,
                                              Worker& worker) {
  const auto runLoop = [&]() -> std::shared_ptr<RunLoop> {
    const auto state = weakState.lock();
    if (!state) return nullptr;
    auto current = eventTaps.currentRunLoop();
    const std::scoped_lock guard{state->stateLock};
    // A stale worker's tap has been replaced before it came here.
    if (state->eventTap != tap) return nullptr;
    state->workerRunLoop = current;
    return current;
  }();
  if (!runLoop) return;

  runLoop->addSource(*source);
  tap->setEnabled(true);
  runLoop->run();
  runLoop->removeSource(*source);
  worker.forgetKeys();

  const auto state = weakState.lock();
  if (!state) return;
  const std::scoped_lock guard{state->stateLock};
  if (state->workerRunLoop == runLoop) state->workerRunLoop = nullptr;
}

}  // namespace keyrow
