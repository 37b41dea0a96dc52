#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <variant>

#include "platform/macos/Conversions.h"
#include "platform/macos/tests/OffScreenKeyrow.h"
#include "platform/macos/tests/ThrowAwayDefaults.h"
#include "ui/PaneLayout.h"

namespace keyrow::macos {

/// A settings window off screen. A test that wants other settings changes them before it
/// creates the window.
class SettingsWindowFixture : public ::testing::Test {
 protected:
  ThrowAwayDefaults suite;
  // As in the application, the window lives as long as the process: AppKit may call it late.
  OffScreenKeyrow& keyrow = *new OffScreenKeyrow{suite.name()};

  /// Whether the view is in the pane, with a size, for everybody to see.
  static void expectShown(NSView* view, NSView* pane) {
    ASSERT_NE(view, nil);
    EXPECT_TRUE([view isDescendantOf:pane]) << utf8Text(view.description);
    EXPECT_FALSE(view.hiddenOrHasHiddenAncestor) << utf8Text(view.description);
    EXPECT_FALSE(NSIsEmptyRect(view.frame)) << utf8Text(view.description);
  }

  static bool isOn(NSButton* checkbox) { return checkbox.state == NSControlStateValueOn; }

  /// The check boxes and the hints of a pane are shown, and say what they should.
  template <typename Controller>
  static void expectRows(Controller* controller, const auto& rows) {
    NSView* const pane = controller.view;
    for (const auto& row : rows) {
      if (const auto* checkbox = std::get_if<Checkbox>(&row.what)) {
        NSButton* const button = [controller checkboxOf:checkbox->what];
        expectShown(button, pane);
        EXPECT_EQ(utf8Text(button.title), checkbox->title);
        EXPECT_EQ(utf8Text(button.accessibilityIdentifier), checkbox->name);
      } else if (const auto* hint = std::get_if<Hint>(&row.what)) {
        expectShown(labelIn(pane, hint->text), pane);
      }
    }
  }

  /// Clicks every check box of a pane twice: each has to set its own switch, and to show it.
  template <typename Controller>
  void expectToggles(Controller* controller, const auto& rows) {
    for (const auto& checkbox : checkboxesOf(rows)) {
      NSButton* const button = [controller checkboxOf:checkbox.what];
      for (const bool on : {true, false}) {
        [button performClick:nil];
        EXPECT_EQ(keyrow.isSwitchedOn(checkbox.what), on) << checkbox.title;
        EXPECT_EQ(isOn(button), on) << checkbox.title;
      }
    }
  }

 private:
  static NSTextField* labelIn(NSView* pane, std::string_view text) {
    for (NSView* view in pane.subviews) {
      if (![view isKindOfClass:NSTextField.class]) continue;
      NSTextField* const label = (NSTextField*)view;
      if (utf8Text(label.stringValue) == text) return label;
    }
    return nil;
  }
};

inline std::string titleOf(NSButton* button) { return utf8Text(button.title); }
inline std::string textOf(NSTextField* label) { return utf8Text(label.stringValue); }

}  // namespace keyrow::macos
