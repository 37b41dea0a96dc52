#pragma once

#include <cstddef>
#include <string_view>

#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedAboutView.h"
#include "sim/ports/SimulatedGeneralView.h"
#include "ui/SettingsWindowView.h"

namespace keyrow::sim {

/// A process's settings window, and the user's hands on it.
class SimulatedSettingsWindowView final : public SettingsWindowView {
 public:
  /// The panes have to outlive this.
  SimulatedSettingsWindowView(const ProcessContext& context, SimulatedGeneralView& general,
                              SimulatedAboutView& about);

  void create(ContentSize size) override;
  bool hasWindow() override { return createdCount_ > 0; }
  void bringToFront() override;
  void selectTab(std::size_t index) override;
  void setFixedContentSize(ContentSize size) override;

  /// How many windows were created.
  int createdCount() const { return createdCount_; }
  bool isVisible() const { return isOrderedIn_ && !isMiniaturized_ && !isApplicationHidden_; }
  /// The same in a word: closed, minimized, hidden with its application, or the selected tab.
  std::string_view stateName() const;
  /// Whether keys go to it: it can be seen, its application is the active one, and no alert of
  /// that is in front of it.
  bool isKey() const;
  /// How often the window was brought to the front.
  int broughtToFrontCount() const { return broughtToFrontCount_; }
  ContentSize contentSize() const { return contentSize_; }
  const SettingsTab& selectedTab() const { return settingsTabs[selectedIndex_]; }

  /// The user clicks somewhere into it, which makes its application the active one.
  void touch();
  /// The user selects a tab; false when there is none of that title.
  bool selectTab(std::string_view title);
  void close();
  /// The window goes into the Dock, until it is brought to the front again.
  void miniaturize();
  /// It hides and shows up with its application.
  void setApplicationHidden(bool isHidden);
  /// A key gets there that nobody else has taken. Nor does the window: where keyboard navigation is
  /// off, none of its controls gets keys.
  void keyDown();

 private:
  void noteShown();
  void updateKey();
  void showSelectedPane();

  const ProcessContext& context_;
  SimulatedGeneralView& general_;
  SimulatedAboutView& about_;
  int createdCount_ = 0;
  bool isOrderedIn_ = false;
  bool isMiniaturized_ = false;
  bool isApplicationHidden_ = false;
  int broughtToFrontCount_ = 0;
  ContentSize contentSize_;
  std::size_t selectedIndex_ = 0;
  Registration activations_;
  Registration alerts_;
};

}  // namespace keyrow::sim
