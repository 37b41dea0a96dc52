#pragma once

#include <memory>

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
  };

  explicit SettingsWindowController(const Uses& uses) : use_{uses} {}

  /// Creates the window; it stays hidden until the first `show`.
  void createWindow() { use_.view.create(); }

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
  const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace keyrow
