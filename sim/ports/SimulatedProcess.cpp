#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {

SimulatedProcess::SimulatedProcess(SimulatedMac& mac, OpenHandles::ProcessID processID,
                                   const std::optional<std::string>& bundleIdentifier)
    : context{.mac = mac, .processID = processID, .bundleIdentifier = bundleIdentifier},
      contents{std::make_shared<Contents>(context, [this] { terminate(); })} {
  running->processIdentifier = processID;
  running->bundleIdentifier = bundleIdentifier;
  running->terminate = [this] {
    if (hang_ && hang_ != Hang::reachable) return false;
    context.mac.scheduler.schedule(Scheduler::Duration{0}, [this, thread = context.mainThread] {
      if (!thread->hasEnded()) quit();
    });
    return true;
  };
  running->forceTerminate = [this] {
    if (hang_ == Hang::unstoppable) return false;
    kill();
    return true;
  };
}

bool SimulatedProcess::launch() {
  context.mac.applications.started(running);
  const auto kept = contents;
  try {
    kept->keyrow.appDelegate().applicationDidFinishLaunching();
    return true;
  } catch (const ProcessEnded&) {
    return false;
  }
}

void SimulatedProcess::terminate() {
  if (hasEnded()) return;
  contents->keyrow.appDelegate().applicationWillTerminate();
  context.mac.whenKeyrowQuits();
  note("has quit");
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
  note("was killed");
  end();
}

void SimulatedProcess::hang(Hang behaviour) {
  hang_ = behaviour;
  context.mainThread->hang();
}

void SimulatedProcess::resume() {
  hang_.reset();
  context.mainThread->resume();
}

void SimulatedProcess::note(const std::string& what) {
  context.mac.timeline.add(TimelineEvent::Kind::process,
                           "Keyrow " + std::to_string(processID()) + " " + what);
}

void SimulatedProcess::end() {
  if (hasEnded()) return;
  context.mainThread->end();
  contents->platform.eventTaps.endThreads();
  running->isTerminated = true;
  // Not now: the code that ends the process may be its own.
  const auto ticket =
      context.mac.scheduler.schedule(Scheduler::Duration{0}, [this] { contents.reset(); });
  tidyUp = DelayedCall{[&scheduler = context.mac.scheduler, ticket] { scheduler.cancel(ticket); }};
}

}  // namespace keyrow::sim
