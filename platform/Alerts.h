#pragma once

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
};

/// What `Alerts::runModal` gives for the first button (`NSAlertFirstButtonReturn`); the
/// second button gives one more, and so on.
inline constexpr int alertFirstButtonReturn = 1000;

/// Alerts to the user.
class Alerts : public Port {
 public:
  /// Shows the alert and waits for the user; gives the modal response.
  virtual int runModal(const Alert& alert) = 0;

  /// The system's beep (`NSBeep`).
  virtual void beep() = 0;
};

}  // namespace keyrow
