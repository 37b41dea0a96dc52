#include "sim/machine/Screen.h"

#include <algorithm>

namespace keyrow::sim {

int Screen::showAlert(const Alert& alert) {
  auto& text = alerts_.emplace_back(alert.messageText);
  text.append("\n").append(alert.informativeText);
  for (const auto button : alert.buttons) text.append("\n[").append(button).append("]");
  note("alert " + quoted(alert.messageText));
  auto pressed = std::prev(alert.buttons.end());
  if (!answers_.empty()) {
    const auto found = std::ranges::find(alert.buttons, answers_.front());
    if (found != alert.buttons.end()) {
      pressed = found;
    } else {
      wrongAnswer_ = "the alert " + quoted(alert.messageText) + " has no button " +
                     quoted(answers_.front()) + ", but";
      for (const auto button : alert.buttons) wrongAnswer_.append(" ").append(quoted(button));
    }
    answers_.pop_front();
  }
  note("the user presses " + quoted(*pressed));
  return alertFirstButtonReturn + static_cast<int>(pressed - alert.buttons.begin());
}

void Screen::open(std::string_view url) {
  openedURLs_.emplace_back(url);
  note("opens " + std::string{url});
}

}  // namespace keyrow::sim
