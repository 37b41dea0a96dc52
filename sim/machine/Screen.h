#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Alerts.h"
#include "sim/machine/ObserverList.h"
#include "sim/machine/OpenHandles.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/Sessions.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// An alert that waits for the user.
struct OpenAlert {
  OpenHandles::ProcessID owner;
  /// In whose session it is.
  std::string user;
  std::string messageText;
  std::string informativeText;
  std::vector<std::string> buttons;
  bool preventsTermination;
  std::function<void(int response)> answered;
};

/// What the user meets besides Keyrow's own views: alerts, prompts, opened URLs. Main
/// thread only.
class Screen {
 public:
  Screen(Timeline& timeline, const Sessions& sessions) : timeline_{timeline}, sessions_{sessions} {}

  /// Shows an alert of a process in a user's session, on top of those that are there. It stays
  /// until the user presses a button, whose modal response `answered` is told then.
  void showAlert(OpenHandles::ProcessID owner, const std::string& user, const Alert& alert,
                 std::function<void(int response)> answered);

  /// The topmost alert of the session that has the screen, or the topmost of a process; null where
  /// there is none.
  const OpenAlert* openAlert() const;
  const OpenAlert* openAlertOf(OpenHandles::ProcessID owner) const;

  /// Whether an alert of a process keeps it from being terminated.
  bool preventsTermination(OpenHandles::ProcessID owner) const;

  /// The user presses a button of the topmost alert, which is there. False when it has no such
  /// button.
  bool answerAlert(std::string_view button);

  /// Calls `handler` whenever an alert has opened, or is about to be answered and has closed.
  Registration observeAlerts(std::function<void()> handler) {
    return alertObservers_.add(std::move(handler));
  }

  /// The process has ended.
  void closeAlertsOf(OpenHandles::ProcessID owner);

  /// All alerts so far: the message, the informative text, and a line for each button.
  const std::vector<std::string>& alerts() const { return alerts_; }

  void open(std::string_view url);

  /// All URLs opened so far.
  const std::vector<std::string>& openedURLs() const { return openedURLs_; }

  /// Puts something else on the timeline.
  void note(std::string_view text) { timeline_.add(TimelineEvent::Kind::screen, {quoted(text)}); }

 private:
  Timeline& timeline_;
  const Sessions& sessions_;
  /// The topmost is the last.
  std::vector<OpenAlert> openAlerts_;
  std::vector<std::string> alerts_;
  std::vector<std::string> openedURLs_;
  ObserverList<> alertObservers_;
};

}  // namespace keyrow::sim
