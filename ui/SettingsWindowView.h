#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "ui/View.h"

namespace keyrow {

/// In points.
struct ContentSize {
  double width = 0;
  double height = 0;

  friend bool operator==(const ContentSize&, const ContentSize&) = default;
};

/// A tab of the settings window.
struct SettingsTab {
  std::string_view title;
  /// A system symbol.
  std::string_view symbolName;
};

inline constexpr std::string_view settingsWindowTitle = "Settings";
/// The window has one size for both panes and all their states: this wide, and as high as the
/// tallest state needs, but at least this high.
inline constexpr ContentSize leastSettingsContentSize{420, 390};
/// In their order; the first is shown first.
inline constexpr std::array<SettingsTab, 2> settingsTabs{{
    {"General", "gearshape"},
    {"About", "info.circle"},
}};

inline constexpr std::size_t aboutTabIndex = 1;

/// What happens to the settings window.
class SettingsWindowActions {
 public:
  /// The tabs' view has come into sight.
  virtual void viewDidAppear() = 0;
  virtual void didSelectTabViewItem() = 0;

 protected:
  ~SettingsWindowActions() = default;
};

/// The settings window (`NSWindow`, with the panes in an `NSTabViewController`). Closing
/// hides it.
class SettingsWindowView : public View<SettingsWindowActions> {
 public:
  /// Creates the window, hidden, with its two tabs and this size.
  virtual void create(ContentSize size) = 0;

  /// Whether there is a window.
  virtual bool hasWindow() = 0;

  /// Brings the window before those of all applications and makes it the key and the
  /// main window (`orderFrontRegardless`, `makeKeyAndOrderFront:`, `makeMainWindow`), also one that
  /// is in the Dock or hidden.
  virtual void bringToFront() = 0;

  /// Selects a tab, by its place.
  virtual void selectTab(std::size_t index) = 0;

  /// Sets the content size, and the smallest and the largest, in the window that the
  /// tabs are in.
  virtual void setFixedContentSize(ContentSize size) = 0;
};

}  // namespace keyrow
