#include "input/KeyboardEventTapController.h"

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

std::string reasonText(std::uint32_t eventType) {
  if (eventType == keyEventType::tapDisabledByTimeout) return "timeout";
  if (eventType == keyEventType::tapDisabledByUserInput) return "user input";
  return "event type " + std::to_string(eventType);
}

}  // namespace

bool KeyboardEventTapController::startEventTap() {
  if (installEventTap()) return true;
  use_.inputLog.error(inputLogText::failedToCreateTap);
  return false;
}

void KeyboardEventTapController::stopEventTap() {
  std::shared_ptr<EventTap> tap;
  std::shared_ptr<RunLoopSource> source;
  std::shared_ptr<RunLoop> runLoop;
  {
    const std::scoped_lock guard{state_->stateLock};
    tap = std::exchange(state_->eventTap, nullptr);
    source = std::exchange(state_->runLoopSource, nullptr);
    runLoop = std::exchange(state_->workerRunLoop, nullptr);
  }
  if (runLoop) runLoop->stop();
  if (!tap) return;
  tap->setEnabled(false);
  tap->invalidate();
}

bool KeyboardEventTapController::reviveEventTap() {
  if (enableExistingTap()) return true;
  stopEventTap();
  return startEventTap();
}

void KeyboardEventTapController::recoverEventTap(std::uint32_t eventType) {
  const auto reason = reasonText(eventType) + ".";
  if (enableExistingTap()) {
    use_.inputLog.notice("Re-enabled the keyboard event tap after " + reason);
    return;
  }
  stopEventTap();
  if (installEventTap()) {
    use_.inputLog.notice("Rebuilt the keyboard event tap after " + reason);
  } else {
    use_.inputLog.error(std::string{inputLogText::failedToRecoverTap} + reason);
  }
}

bool KeyboardEventTapController::installEventTap() {
  if (enableExistingTap()) return true;

  auto tap = use_.eventTaps.createTap(eventsOfInterest, use_.handler);
  if (!tap) return false;
  auto source = use_.eventTaps.createRunLoopSource(*tap);
  if (!source) {
    tap->invalidate();
    return false;
  }
  // What is replaced is released out of the lock.
  auto oldTap = tap;
  auto oldSource = source;
  {
    const std::scoped_lock guard{state_->stateLock};
    oldTap = std::exchange(state_->eventTap, tap);
    oldSource = std::exchange(state_->runLoopSource, source);
  }
  // The worker enables the tap when it is ready for it.
  use_.eventTaps.startThread(
      std::string{appIdentifier} + ".KeyboardEventTap",
      [weakState = std::weak_ptr{state_}, &eventTaps = use_.eventTaps, tap = std::move(tap),
       source = std::move(source)] { runTapThread(weakState, eventTaps, tap, source); });
  return true;
}

bool KeyboardEventTapController::enableExistingTap() {
  std::shared_ptr<EventTap> tap;
  {
    const std::scoped_lock guard{state_->stateLock};
    tap = state_->eventTap;
  }
  if (!tap) return false;
  tap->setEnabled(true);
  return tap->isEnabled();
}

void KeyboardEventTapController::runTapThread(const std::weak_ptr<State>& weakState,
                                              EventTaps& eventTaps,
                                              const std::shared_ptr<EventTap>& tap,
                                              const std::shared_ptr<RunLoopSource>& source) {
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

  const auto state = weakState.lock();
  if (!state) return;
  const std::scoped_lock guard{state->stateLock};
  if (state->workerRunLoop == runLoop) state->workerRunLoop = nullptr;
}

}  // namespace keyrow
