#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/EventMonitors.h"
#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedSettingsWindowView.h"
#include "ui/MainMenu.h"

namespace keyrow::sim {

/// A process's main menu, and the user's hands on it.
class SimulatedMainMenuView final : public MainMenuView {
 public:
  /// What asking the application for it does.
  struct Application {
    std::function<void()> hide;
    std::function<void()> terminate;
  };

  /// The window has to outlive this.
  SimulatedMainMenuView(const ProcessContext& context, SimulatedSettingsWindowView& settingsWindow,
                        Application application)
      : context_{context}, settingsWindow_{settingsWindow}, application_{std::move(application)} {}

  void create() override;

  /// The titles of the items that can be chosen.
  std::vector<std::string> enabledTitles() const;

  /// Chooses the enabled item with this title; false when there is none.
  bool choose(std::string_view title);

  /// Chooses the item with this key and just these modifiers, whether Caps Lock is on or not; false
  /// when there is none that is enabled.
  bool performKeyEquivalent(const KeyDown& key);

 private:
  /// AppKit disables what nothing that has the focus can do.
  bool isEnabled(const MainMenuItem& item) const;
  const MainMenuItem* find(const std::function<bool(const MainMenuItem&)>& isMeant) const;
  void perform(MainMenuAction action);

  const ProcessContext& context_;
  SimulatedSettingsWindowView& settingsWindow_;
  const Application application_;
  bool exists_ = false;
};

}  // namespace keyrow::sim
