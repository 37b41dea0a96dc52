#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {
namespace {

static_assert(alertFirstButtonReturn == NSAlertFirstButtonReturn);

class MacAlertsTest : public ::testing::Test {
 protected:
  const std::unique_ptr<Alerts> alerts = makeAlerts();
  const Alert alert{.messageText = "Naïve 😀?",
                    .informativeText = "More about it.",
                    .buttons = {"First", "Second", "Third"},
                    .preventsTermination = false};

  /// Shows the alert, looks at its window, and clicks the button with this title; what the alert
  /// has told, an answer each.
  std::vector<int> click(
      std::string_view title, const std::function<void(NSWindow*)>& look = [](NSWindow*) {}) {
    NSTimer* const timer =
        [NSTimer timerWithTimeInterval:0.05
                               repeats:YES
                                 block:^(NSTimer* running) {
                                   NSWindow* const window = NSApp.modalWindow;
                                   if (!window) return;
                                   [running invalidate];
                                   look(window);
                                   NSButton* const button = buttonIn(window.contentView, title);
                                   EXPECT_NE(button, nil) << title;
                                   // Whatever else it is, it is not to wait for somebody.
                                   button ? [button performClick:nil] : [NSApp abortModal];
                                   // It looks whether it is to end only after an event.
                                   [NSApp postEvent:anyEvent() atStart:NO];
                                 }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSModalPanelRunLoopMode];
    std::vector<int> answers;
    alerts->runModal(alert, [&](int response) { answers.push_back(response); });
    [timer invalidate];
    return answers;
  }

  static NSEvent* anyEvent() {
    return [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                              location:NSZeroPoint
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                               subtype:0
                                 data1:0
                                 data2:0];
  }

  static NSButton* buttonIn(NSView* view, std::string_view title) {
    if ([view isKindOfClass:NSButton.class] && utf8Text(((NSButton*)view).title) == title) {
      return (NSButton*)view;
    }
    for (NSView* subview in view.subviews) {
      if (NSButton* const found = buttonIn(subview, title)) return found;
    }
    return nil;
  }

  static bool showsText(NSView* view, std::string_view text) {
    if ([view isKindOfClass:NSTextField.class] &&
        utf8Text(((NSTextField*)view).stringValue) == text) {
      return !view.hiddenOrHasHiddenAncestor;
    }
    for (NSView* subview in view.subviews) {
      if (showsText(subview, text)) return true;
    }
    return false;
  }
};

TEST_F(MacAlertsTest, TellsOnceWhichButtonItWas) {
  EXPECT_EQ(click("First"), std::vector{alertFirstButtonReturn});
  EXPECT_EQ(click("Second"), std::vector{alertFirstButtonReturn + 1});
  EXPECT_EQ(click("Third"), std::vector{alertFirstButtonReturn + 2});
}

TEST_F(MacAlertsTest, ShowsWhatItSaysAndHasItsFirstButtonForTheReturnKey) {
  bool hasLooked = false;
  click("Second", [&](NSWindow* window) {
    hasLooked = true;
    EXPECT_TRUE(showsText(window.contentView, alert.messageText));
    EXPECT_TRUE(showsText(window.contentView, alert.informativeText));
    EXPECT_EQ(utf8Text(window.defaultButtonCell.title), "First");
    EXPECT_FALSE(window.preventsApplicationTerminationWhenModal);
  });
  EXPECT_TRUE(hasLooked);
}

}  // namespace
}  // namespace keyrow::macos
