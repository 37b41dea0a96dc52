#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "platform/Port.h"

namespace keyrow {

/// A question to the user (`NSAlert`, warning style).
struct Alert {
  std::string_view messageText;
  std::string_view informativeText;
  /// From the first, which is the default, on.
  std::vector<std::string_view> buttons;
  /// Whether the application cannot be terminated before it is answered: neither by the user, nor
  /// for a log-out, nor by a newer instance (`preventsApplicationTerminationWhenModal`). macOS
  /// wants it so where nobody says otherwise.
  bool preventsTermination = true;
};

/// What `Alerts::runModal` tells for the first button (`NSAlertFirstButtonReturn`); the
/// second button gives one more, and so on.
inline constexpr int alertFirstButtonReturn = 1000;

/// Alerts to the user.
class Alerts : public Port {
 public:
  /// Shows the alert, waits for the user, and tells `answered` the modal response. Call it
  /// last: a Mac comes back when the user has answered, the simulated one at once.
  ///
  /// Meanwhile the main run loop goes on. The main queue goes on, too, unless this is called from
  /// one of its blocks: start it from `MainRunLoop::perform` then.
  virtual void runModal(const Alert& alert, std::function<void(int response)> answered) = 0;

  /// The system's beep (`NSBeep`).
  virtual void beep() = 0;
};

}  // namespace keyrow
