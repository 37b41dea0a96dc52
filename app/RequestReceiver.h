#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/Commands.h"
#include "core/Request.h"
#include "core/Status.h"
#include "platform/Clock.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/MainQueue.h"
#include "platform/Registration.h"

namespace keyrow {

/// Takes what the command `keyrow` asks of the running one, and answers. Each command is carried
/// out and answered by itself, in the order of arrival; questions that arrive within a tenth of a
/// second share one answer. Main thread only.
class RequestReceiver {
 public:
  /// What it uses. `takesRequests` tells whether this Keyrow is the one to answer, `look` finds out
  /// what has changed unnoticed, for somebody who asks, and `status` tells how things stand.
  struct Uses {
    Commands& commands;
    Clock& clock;
    DistributedNotificationCenter& distributedNotificationCenter;
    MainQueue& mainQueue;
    std::function<bool()> takesRequests;
    std::function<void()> look;
    std::function<Status()> status;
  };

  explicit RequestReceiver(Uses uses) : use_{std::move(uses)} {}

  void start();
  void stop();

 private:
  void receive(const std::optional<PropertyDictionary>& userInfo);
  bool take(const Request& request);
  void carryOut(const Request& request);
  void answerLater(const Request& question);
  void answerQuestions();
  void keepWatching();
  void lookForChanges();
  void announceChange();
  void post(const Answer& answer);

  const Uses use_;
  ObserverToken observer_;

  /// When what came in the last second was made, by its number.
  std::map<std::string, std::chrono::nanoseconds> taken_;

  /// The questions that wait for their answer.
  std::vector<std::string> questions_;
  bool isLookWanted_ = false;
  DelayedCall sharedAnswer_;

  /// Until when somebody watches (`Clock::uptime`), and what they have been told.
  std::chrono::nanoseconds watchedUntil_{0};
  std::optional<Status> told_;
  DelayedCall nextLook_;
};

}  // namespace keyrow
