#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedControl.h"
#include "ui/PaneLayout.h"

namespace keyrow::sim {

/// What a pane's controls have in common, and the user's hands on them. `PaneView` is the
/// pane's view port.
template <typename PaneView>
class SimulatedPane : public PaneView {
 public:
  explicit SimulatedPane(const ProcessContext& context) : context_{context} {}

  void setChecked(Switch what, bool checked) override { isChecked_[what] = checked; }
  /// Whether the check box that switches this is checked; false before it was shown.
  bool isChecked(Switch what) const {
    const auto found = isChecked_.find(what);
    return found != isChecked_.end() && found->second;
  }

  double fittingHeight() override {
    load();
    return neededHeight();
  }

  /// The pane is looked at for the first time.
  void load() {
    if (isLoaded_) return;
    isLoaded_ = true;
    actions().viewDidLoad();
  }

  /// The pane comes into sight.
  void appear() {
    load();
    actions().viewWillAppear();
  }

  /// What can be clicked, in the order of the pane.
  std::vector<SimulatedControl> controls() const {
    std::vector<SimulatedControl> controls;
    for (const auto& clickable : clickables()) controls.push_back(clickable.control);
    return controls;
  }

  /// The user clicks the control with this title; false, and nothing happens, when there is
  /// none, or when it is disabled.
  bool click(std::string_view title) {
    for (const auto& [control, does] : clickables()) {
      if (control.title != title || !control.isEnabled) continue;
      perform(does);
      return true;
    }
    return false;
  }

  using PaneView::actions;

 protected:
  using Actions = typename PaneView::Actions;

  struct Clickable {
    SimulatedControl control;
    /// What it switches, or whom it calls.
    std::variant<Switch, void (Actions::*)()> does;
  };

  static Clickable clickable(const Checkbox& checkbox) {
    return {.control = {.title = std::string{checkbox.title}}, .does = checkbox.what};
  }
  static Clickable clickable(std::string_view title, void (Actions::*action)(),
                             bool isEnabled = true) {
    return {.control = {.title = std::string{title}, .isEnabled = isEnabled}, .does = action};
  }

  virtual std::vector<Clickable> clickables() const = 0;

  /// How high the pane has to be for what it shows now, in points.
  virtual double neededHeight() const = 0;

  /// The same of rows, with the gaps above them. `heightOf` gives the height of a control.
  double heightOfRows(const auto& rows, int hintMaximumLines, auto heightOf) const {
    constexpr double checkboxHeight = 16;
    double height = 0;
    for (const auto& row : rows) {
      height += row.place.topGap;
      if (const auto* hint = std::get_if<Hint>(&row.what)) {
        height += heightOfHint(hint->text, hintMaximumLines);
      } else {
        height += row.what.index() == 0 ? heightOf(std::get<0>(row.what)) : checkboxHeight;
      }
    }
    return height;
  }

  double heightOfHint(std::string_view text, int maximumLines) const {
    const auto lines = context_.mac.systemFont.lineCount(text, FontSize::small, paneTextWidth);
    return SystemFont::lineHeight(FontSize::small) * std::min(lines, maximumLines);
  }

  const ProcessContext& context() const { return context_; }

 private:
  void perform(const std::variant<Switch, void (Actions::*)()>& does) {
    if (const auto* what = std::get_if<Switch>(&does)) {
      // A click changes a check box by itself; its action says what it stands at now.
      const bool isOn = isChecked_[*what] = !isChecked_[*what];
      context_.mainThread->deliver([this, what = *what, isOn] { actions().toggle(what, isOn); });
      return;
    }
    context_.mainThread->deliver([this, action = std::get<1>(does)] { (actions().*action)(); });
  }

  const ProcessContext& context_;
  std::map<Switch, bool> isChecked_;
  bool isLoaded_ = false;
};

}  // namespace keyrow::sim
