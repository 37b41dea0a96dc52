#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "ui/SettingsWindowView.h"

namespace keyrow {

/// The one settings window: created once, shown and hidden as often as the user likes,
/// always of the same size. Main thread only.
class SettingsWindowController final : public SettingsWindowActions {
 public:
  struct Uses {
    SettingsWindowView& view;
    Application& application;
    MainQueue& mainQueue;
    /// Gives the height of the tallest state of either pane, in points.
    std::function<double()> tallestPane;
  };

  explicit SettingsWindowController(Uses uses) : use_{std::move(uses)} {}

  /// Creates the window, as large as it ever has to be; it stays hidden until the first `show`.
  void createWindow();

  /// The size that it has at all times.
  ContentSize contentSize() const { return contentSize_; }

  /// Makes this the active application with the window in front, and once more when the
  /// main queue gets to it: what is going on now may still take the focus away.
  void show();

  /// The same with the About pane.
  void showAbout();

  void viewDidAppear() override;
  void didSelectTabViewItem() override;

 private:
  /// Whether there is a window.
  bool bringForward();

  const Uses use_;
  ContentSize contentSize_ = leastSettingsContentSize;
  const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace keyrow
