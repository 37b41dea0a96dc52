#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/macos/Conversions.h"
#include "platform/macos/tests/OffScreenKeyrow.h"
#include "platform/macos/tests/ThrowAwayDefaults.h"

namespace keyrow::macos {

/// A settings window off screen. A test that wants other settings changes them before it
/// creates the window.
class SettingsWindowFixture : public ::testing::Test {
 protected:
  ThrowAwayDefaults suite;
  // As in the application, the window lives as long as the process: AppKit may call it late.
  OffScreenKeyrow& keyrow = *new OffScreenKeyrow{suite.open()};

  /// Whether the view is in the pane, with a size, for everybody to see.
  static void expectShown(NSView* view, NSView* pane) {
    ASSERT_NE(view, nil);
    EXPECT_TRUE([view isDescendantOf:pane]) << utf8Text(view.description);
    EXPECT_FALSE(view.hiddenOrHasHiddenAncestor) << utf8Text(view.description);
    EXPECT_FALSE(NSIsEmptyRect(view.frame)) << utf8Text(view.description);
  }

  static bool isOn(NSButton* checkbox) { return checkbox.state == NSControlStateValueOn; }
};

inline std::string titleOf(NSButton* button) { return utf8Text(button.title); }
inline std::string textOf(NSTextField* label) { return utf8Text(label.stringValue); }

}  // namespace keyrow::macos
