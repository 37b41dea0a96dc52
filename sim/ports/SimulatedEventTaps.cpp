#include "sim/ports/SimulatedEventTaps.h"

#include <utility>

namespace keyrow::sim {

namespace {

class Tap final : public EventTap {
 public:
  Tap(const ProcessContext& context, std::shared_ptr<ServedTap> served)
      : mac_{context.mac},
        served_{std::move(served)},
        handle_{context.mac.openHandles, "EventTap", context.processID} {}

  void setEnabled(bool enabled) override {
    if (!enabled) mac_.trace.add("disable event tap");
    if (enabled && !mac_.call(PortCall::enableEventTap)) return;
    mac_.eventTaps.setEnabled(*served_, enabled);
  }
  bool isEnabled() override { return mac_.eventTaps.isEnabled(*served_); }
  void invalidate() override {
    mac_.trace.add("invalidate event tap");
    mac_.eventTaps.invalidate(*served_);
  }

  const std::shared_ptr<ServedTap>& served() const { return served_; }

 private:
  SimulatedMac& mac_;
  const std::shared_ptr<ServedTap> served_;
  const OpenHandle handle_;
};

class Source final : public RunLoopSource {
 public:
  Source(const ProcessContext& context, std::shared_ptr<ServedTap> served)
      : mac_{context.mac},
        served_{std::move(served)},
        handle_{context.mac.openHandles, "RunLoopSource", context.processID} {}

  void serveOn(std::shared_ptr<SimulatedRunLoop> runLoop) {
    mac_.eventTaps.serve(*served_, std::move(runLoop));
  }

 private:
  SimulatedMac& mac_;
  const std::shared_ptr<ServedTap> served_;
  const OpenHandle handle_;
};

/// A run loop as a port hands it out; ties a source's tap to it.
class Handle final : public RunLoop {
 public:
  Handle(std::shared_ptr<SimulatedRunLoop> runLoop, SimulatedMac& mac)
      : runLoop_{std::move(runLoop)}, mac_{mac} {}

  void addSource(RunLoopSource& source) override {
    runLoop_->addSource(source);
    static_cast<Source&>(source).serveOn(runLoop_);
  }
  void removeSource(RunLoopSource& source) override {
    static_cast<Source&>(source).serveOn(nullptr);
    runLoop_->removeSource(source);
  }
  void run() override { runLoop_->run(); }
  void perform(std::function<void()> work) override { runLoop_->perform(work); }
  void stop() override {
    mac_.eventTaps.announceStop(*runLoop_);
    runLoop_->stop();
    if (mac_.threadsRunAtOnce) runLoop_->awaitEnd();
  }

 private:
  const std::shared_ptr<SimulatedRunLoop> runLoop_;
  SimulatedMac& mac_;
};

thread_local std::shared_ptr<Handle> threadRunLoop;

}  // namespace

std::shared_ptr<EventTap> SimulatedEventTaps::createTap(std::uint64_t eventsOfInterest,
                                                        EventTapCallback& callback) {
  auto& mac = context_.mac;
  if (!mac.call(PortCall::createEventTap)) return nullptr;
  if (!mac.isAccessibilityGranted) return nullptr;
  auto served = std::make_shared<ServedTap>();
  served->eventsOfInterest = eventsOfInterest;
  served->callback = &callback;
  mac.eventTaps.insert(served);
  const std::scoped_lock guard{mutex_};
  taps_.push_back(served);
  return std::make_shared<Tap>(context_, std::move(served));
}

std::shared_ptr<RunLoopSource> SimulatedEventTaps::createRunLoopSource(EventTap& tap) {
  if (!context_.mac.call(PortCall::createRunLoopSource)) return nullptr;
  return std::make_shared<Source>(context_, static_cast<Tap&>(tap).served());
}

std::shared_ptr<RunLoop> SimulatedEventTaps::currentRunLoop() { return threadRunLoop; }

void SimulatedEventTaps::startThread(std::string_view name, std::function<void()> body) {
  context_.mac.trace.add("start thread " + std::string{name});
  auto runLoop = std::make_shared<SimulatedRunLoop>();
  {
    const std::scoped_lock guard{mutex_};
    if (isEnding_) return;
    runLoops_.push_back(runLoop);
    auto counted =
        std::make_shared<OpenHandle>(context_.mac.openHandles, "thread", context_.processID);
    threads_.emplace_back([runLoop, &mac = context_.mac, body = std::move(body),
                           counted = std::move(counted)]() mutable {
      threadRunLoop = std::make_shared<Handle>(runLoop, mac);
      body();
      // Before the thread counts as ended: who waits for that wants all of it gone.
      body = nullptr;
      threadRunLoop = nullptr;
      counted = nullptr;
      runLoop->finish();
    });
  }
  if (context_.mac.threadsRunAtOnce) runLoop->awaitStart();
}

void SimulatedEventTaps::endThreads() {
  std::vector<std::thread> ending;
  {
    const std::scoped_lock guard{mutex_};
    isEnding_ = true;
    for (const auto& weak : taps_) {
      if (const auto tap = weak.lock()) context_.mac.eventTaps.invalidate(*tap);
    }
    for (const auto& runLoop : runLoops_) runLoop->shutDown();
    ending = std::exchange(threads_, {});
  }
  for (auto& thread : ending) thread.join();
}

}  // namespace keyrow::sim
