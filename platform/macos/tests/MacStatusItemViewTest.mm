#import <QuartzCore/QuartzCore.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacStatusItemView.h"

namespace keyrow::macos {
namespace {

class MacStatusItemViewTest : public ::testing::Test, public StatusItemActions {
 protected:
  void SetUp() override {
    view.setActions(*this);
    view.create();
    if (!view.button()) GTEST_SKIP() << "There is no menu bar here.";
  }

  void statusBarButtonClicked(ClickEvent event, bool) override { clicks.push_back(event); }
  void showMenu() override { ++menus; }
  void handleMenuGlobalSwitch(const std::optional<PropertyValue>&) override {}
  void handleMenuLocalSwitch(const std::optional<PropertyValue>&) override {}
  void openPreferences() override {}
  void quit() override {}
  void menuDidClose() override {}

  static NSEvent* mouseEvent(NSEventType type) {
    return [NSEvent mouseEventWithType:type
                              location:NSZeroPoint
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:0];
  }

  /// The two dots, as they lie on the button.
  std::vector<KeyrowDotView*> dots() {
    std::vector<KeyrowDotView*> found;
    for (NSView* subview in view.button().subviews) {
      if ([subview isKindOfClass:KeyrowDotView.class]) found.push_back((KeyrowDotView*)subview);
    }
    return found;
  }

  MacStatusItemView view;
  std::vector<ClickEvent> clicks;
  int menus = 0;
};

TEST_F(MacStatusItemViewTest, SendsItsActionForALeftMouseUpAndARightMouseDown) {
  const NSInteger mask = [view.button() sendActionOn:NSEventMaskAny];
  EXPECT_EQ(static_cast<NSUInteger>(mask), NSEventMaskLeftMouseUp | NSEventMaskRightMouseDown);
}

TEST_F(MacStatusItemViewTest, KnowsWhichEventItWas) {
  EXPECT_EQ(clickEvent(nil), ClickEvent::none);
  EXPECT_EQ(clickEvent(mouseEvent(NSEventTypeLeftMouseUp)), ClickEvent::leftMouseUp);
  EXPECT_EQ(clickEvent(mouseEvent(NSEventTypeRightMouseDown)), ClickEvent::rightMouseDown);
  EXPECT_EQ(clickEvent(mouseEvent(NSEventTypeLeftMouseDown)), ClickEvent::other);
}

TEST_F(MacStatusItemViewTest, APressWithoutAMouseCounts) {
  [view.button() performClick:nil];
  EXPECT_EQ(clicks.size(), 1U);
}

TEST_F(MacStatusItemViewTest, OffersItsMenuToAssistiveTechnology) {
  NSArray<NSAccessibilityCustomAction*>* const actions = view.button().accessibilityCustomActions;
  ASSERT_EQ(actions.count, 1U);
  EXPECT_EQ(utf8Text(actions[0].name), showMenuActionName);
  NSObject* const target = (NSObject*)actions[0].target;
  ASSERT_TRUE([target respondsToSelector:actions[0].selector]);
  [NSApp sendAction:actions[0].selector to:target from:nil];
  EXPECT_EQ(menus, 1);
}

TEST_F(MacStatusItemViewTest, HasANameAndAValue) {
  EXPECT_EQ(utf8Text(view.button().accessibilityLabel), "Keyrow");
  view.setAccessibilityValue("Standard function keys by default");
  EXPECT_EQ(utf8Text(view.button().accessibilityValue), "Standard function keys by default");
}

TEST_F(MacStatusItemViewTest, HasTwoDotsAtOnePlaceThatFollowTheAppearance) {
  ASSERT_EQ(dots().size(), 2U);
  EXPECT_TRUE(dots()[0].hidden);
  EXPECT_TRUE(dots()[1].hidden);
  view.setScopeIndicator(false, "Local F-Key Mode");
  KeyrowDotView* const dot = dots()[1];
  EXPECT_FALSE(dot.hidden);
  EXPECT_EQ(utf8Text(dot.toolTip), "Local F-Key Mode");
  for (NSAppearanceName name in @[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]) {
    NSAppearance* const appearance = [NSAppearance appearanceNamed:name];
    view.button().appearance = appearance;
    [appearance performAsCurrentDrawingAppearance:^{
      EXPECT_TRUE(CGColorEqualToColor(dot.layer.backgroundColor, NSColor.systemBlueColor.CGColor))
          << utf8Text(name);
    }];
  }
  view.setScopeIndicator(true, std::nullopt);
  EXPECT_TRUE(dot.hidden);
  EXPECT_EQ(dot.toolTip, nil);
}

}  // namespace
}  // namespace keyrow::macos
