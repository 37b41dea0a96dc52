#pragma once

#include <exception>
#include <functional>
#include <utility>

#include "platform/MainRunLoop.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Thrown where a process would go on although it has ended.
class ProcessEnded : public std::exception {
 public:
  const char* what() const noexcept override { return "the process has ended"; }
};

/// The run loop of a process's main thread, on the machine's time.
class SimulatedMainRunLoop final : public MainRunLoop {
 public:
  explicit SimulatedMainRunLoop(const ProcessContext& context) : context_{context} {}

  /// Lets the machine run that long. Throws `ProcessEnded` when this process does not
  /// outlive that.
  void run(std::chrono::nanoseconds duration) override {
    context_.mac.scheduler.advance(duration);
    if (context_.mainThread->hasEnded()) throw ProcessEnded{};
  }

  void perform(std::function<void()> work) override {
    context_.mac.scheduler.schedule(Scheduler::Duration{0},
                                    [thread = context_.mainThread, work = std::move(work)] {
                                      thread->performInDefaultMode(work);
                                    });
  }

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
