#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Request.h"
#include "platform/Clock.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/MainQueue.h"
#include "platform/Process.h"
#include "platform/Workspace.h"

namespace keyrow::tool {

/// The Keyrow that runs, as others reach it: one question or command at a time. Main thread only.
class RunningKeyrow {
 public:
  struct Uses {
    Clock& clock;
    DistributedNotificationCenter& distributedNotificationCenter;
    MainQueue& mainQueue;
    Process& process;
    Workspace& workspace;
  };

  /// Absent when Keyrow did not answer; without a status when it has only begun.
  using AnswerHandler = std::function<void(const std::optional<Answer>& answer)>;

  explicit RunningKeyrow(const Uses& uses) : use_{uses} {}

  /// The process identifiers of all that run; more than one while a newer one takes over.
  std::vector<std::int64_t> processes() const;
  bool isRunning() const { return !processes().empty(); }

  /// Whether one runs that was there when the last request went unanswered.
  bool isSilent() const;

  /// Whether an answer is waited for.
  bool isAsked() const { return handler_ != nullptr; }

  /// Asks, and calls `handler` once, after 11.25 s at the latest.
  void ask(Request::Kind kind, const std::string& subject, const std::string& value,
           AnswerHandler handler);

 private:
  void hear(const Answer& answer);
  void waitFor(std::chrono::nanoseconds time, std::optional<Answer> answer);
  void settle(const std::optional<Answer>& answer);

  const Uses use_;
  int askedCount_ = 0;
  /// Those that ran when the last request went unanswered.
  std::vector<std::int64_t> silent_;
  /// Empty while nothing is waited for.
  AnswerHandler handler_;
  ObserverToken answerObserver_;
  DelayedCall silence_;
};

}  // namespace keyrow::tool
