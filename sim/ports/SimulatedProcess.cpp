#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {

SimulatedProcess::SimulatedProcess(SimulatedMac& mac, OpenHandles::ProcessID processID,
                                   const std::optional<std::string>& bundleIdentifier)
    : context_{.mac = mac,
               .processID = processID,
               .bundleIdentifier = bundleIdentifier,
               .user = mac.sessions.active()},
      contents_{std::make_shared<Contents>(context_, [this] { terminate(); })} {
  running_->processIdentifier = processID;
  running_->bundleIdentifier = bundleIdentifier;
  running_->user = context_.user;
  running_->terminate = [this] {
    if (hang_ && hang_ != Hang::reachable) return false;
    context_.mac.scheduler.schedule(Scheduler::Duration{0}, [this, thread = context_.mainThread] {
      if (!thread->hasEnded()) quit();
    });
    return true;
  };
  running_->forceTerminate = [this] {
    if (hang_ == Hang::unstoppable) return false;
    kill();
    return true;
  };
}

bool SimulatedProcess::launch() {
  context_.mac.applications.started(running_);
  note("launched");
  const auto kept = contents_;
  try {
    kept->keyrow.appDelegate().applicationDidFinishLaunching();
    return true;
  } catch (const ProcessEnded&) {
    return false;
  }
}

void SimulatedProcess::terminate() {
  // AppKit does not even ask the delegate then.
  if (hasEnded() || context_.mac.screen.preventsTermination(processID())) return;
  contents_->keyrow.appDelegate().applicationWillTerminate();
  context_.mac.whenKeyrowQuits(user());
  note("quit");
  end();
}

void SimulatedProcess::quit() {
  perform([this] { terminate(); });
}

void SimulatedProcess::reopen() {
  perform([this] { keyrow().appDelegate().applicationShouldHandleReopen(false); });
}

void SimulatedProcess::kill() {
  if (hasEnded()) return;
  context_.mac.hasKilledKeyrow = true;
  note("killed");
  end();
}

void SimulatedProcess::hang(Hang behaviour) {
  hang_ = behaviour;
  context_.mainThread->hang();
}

void SimulatedProcess::resume() {
  hang_.reset();
  context_.mainThread->resume();
}

void SimulatedProcess::note(const std::string& what) {
  context_.mac.timeline.add(TimelineEvent::Kind::process, {std::to_string(processID()), what});
}

void SimulatedProcess::end() {
  if (hasEnded()) return;
  context_.mainThread->end();
  contents_->platform.eventTaps.endThreads();
  running_->isTerminated = true;
  // Not now: the code that ends the process may be its own.
  const auto ticket = context_.mac.scheduler.schedule(Scheduler::Duration{0}, [this] {
    contents_.reset();
    if (context_.bundleIdentifier) context_.mac.applications.ended(*context_.bundleIdentifier);
  });
  tidyUp_ =
      DelayedCall{[&scheduler = context_.mac.scheduler, ticket] { scheduler.cancel(ticket); }};
}

}  // namespace keyrow::sim
