#include "sim/machine/Screen.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace keyrow::sim {

void Screen::showAlert(OpenHandles::ProcessID owner, const std::string& user, const Alert& alert,
                       std::function<void(int response)> answered) {
  auto& text = alerts_.emplace_back(alert.messageText);
  text.append("\n").append(alert.informativeText);
  for (const auto button : alert.buttons) text.append("\n[").append(button).append("]");
  note("alert " + quoted(alert.messageText));
  openAlerts_.push_back({.owner = owner,
                         .user = user,
                         .messageText = std::string{alert.messageText},
                         .informativeText = std::string{alert.informativeText},
                         .buttons = {alert.buttons.begin(), alert.buttons.end()},
                         .preventsTermination = alert.preventsTermination,
                         .answered = std::move(answered)});
  alertObservers_.notify();
}

const OpenAlert* Screen::openAlert() const {
  auto topmostFirst = openAlerts_ | std::views::reverse;
  const auto found = std::ranges::find(topmostFirst, sessions_.active(), &OpenAlert::user);
  return found == topmostFirst.end() ? nullptr : &*found;
}

const OpenAlert* Screen::openAlertOf(OpenHandles::ProcessID owner) const {
  auto topmostFirst = openAlerts_ | std::views::reverse;
  const auto found = std::ranges::find(topmostFirst, owner, &OpenAlert::owner);
  return found == topmostFirst.end() ? nullptr : &*found;
}

bool Screen::preventsTermination(OpenHandles::ProcessID owner) const {
  return std::ranges::any_of(openAlerts_, [owner](const OpenAlert& alert) {
    return alert.owner == owner && alert.preventsTermination;
  });
}

bool Screen::answerAlert(std::string_view button) {
  const auto place = openAlerts_.begin() + (openAlert() - openAlerts_.data());
  const auto pressed = std::ranges::find(place->buttons, button);
  if (pressed == place->buttons.end()) return false;
  const auto response = alertFirstButtonReturn + static_cast<int>(pressed - place->buttons.begin());
  const auto alert = std::move(*place);
  openAlerts_.erase(place);
  note("the user presses " + quoted(button));
  alertObservers_.notify();
  alert.answered(response);
  return true;
}

void Screen::closeAlertsOf(OpenHandles::ProcessID owner) {
  std::erase_if(openAlerts_, [owner](const OpenAlert& alert) { return alert.owner == owner; });
}

void Screen::open(std::string_view url) {
  openedURLs_.emplace_back(url);
  note("opens " + std::string{url});
}

}  // namespace keyrow::sim
