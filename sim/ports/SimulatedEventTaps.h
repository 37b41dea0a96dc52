#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/EventTaps.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Event taps of one process, and its threads, which are real ones.
class SimulatedEventTaps final : public EventTaps {
 public:
  explicit SimulatedEventTaps(const ProcessContext& context) : context_{context} {}
  ~SimulatedEventTaps() override { endThreads(); }

  std::shared_ptr<EventTap> createTap(std::uint64_t eventsOfInterest,
                                      EventTapCallback& callback) override;
  std::shared_ptr<RunLoopSource> createRunLoopSource(EventTap& tap) override;
  std::shared_ptr<RunLoop> currentRunLoop() override;
  void startThread(std::string_view name, std::function<void()> body) override;

  /// Takes the process's taps away and ends its threads, as the end of the process does.
  void endThreads();

 private:
  const ProcessContext& context_;
  /// Guards the fields below.
  std::mutex mutex_;
  bool isEnding_ = false;
  std::vector<std::weak_ptr<ServedTap>> taps_;
  std::vector<std::shared_ptr<SimulatedRunLoop>> runLoops_;
  std::vector<std::thread> threads_;
};

}  // namespace keyrow::sim
