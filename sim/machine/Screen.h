#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Alerts.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// What the user meets besides Keyrow's own views: alerts, prompts, opened URLs. Main
/// thread only.
class Screen {
 public:
  explicit Screen(Timeline& timeline) : timeline_{timeline} {}

  /// Which button the user presses in the next alert without an answer yet. Without one it
  /// is the last button, and also where the alert has no such button, which is remembered.
  void answerNextAlert(std::string button) { answers_.push_back(std::move(button)); }

  /// Shows an alert; gives the modal response.
  int showAlert(const Alert& alert);

  /// What was wrong with an answer since this was last asked; empty when nothing was.
  std::string takeWrongAnswer() { return std::exchange(wrongAnswer_, {}); }

  /// All alerts so far: the message, the informative text, and a line for each button.
  const std::vector<std::string>& alerts() const { return alerts_; }

  void open(std::string_view url);

  /// All URLs opened so far.
  const std::vector<std::string>& openedURLs() const { return openedURLs_; }

  /// Puts something else on the timeline.
  void note(std::string_view text) { timeline_.add(TimelineEvent::Kind::screen, {quoted(text)}); }

 private:
  Timeline& timeline_;
  std::deque<std::string> answers_;
  std::string wrongAnswer_;
  std::vector<std::string> alerts_;
  std::vector<std::string> openedURLs_;
};

}  // namespace keyrow::sim
