#include <string>
#include <vector>

#include "platform/macos/tests/SettingsWindowFixture.h"

namespace keyrow::macos {
namespace {

class KeyLoopTest : public SettingsWindowFixture {
 protected:
  void SetUp() override { keyrow.createWindow(); }

  /// The views that the key loop goes through, back to where it began.
  static std::vector<NSView*> loopFrom(NSView* first) {
    std::vector<NSView*> loop;
    constexpr std::size_t most = 50;
    for (NSView* view = first; view && loop.size() < most; view = view.nextKeyView) {
      if (view == first && !loop.empty()) return loop;
      loop.push_back(view);
    }
    ADD_FAILURE() << "The loop does not come back to where it began.";
    return loop;
  }

  /// Rows from the top, and within a row from the left.
  static void expectReadingOrder(NSView* first, NSView* pane) {
    constexpr CGFloat sameRow = 8;
    const auto loop = loopFrom(first);
    EXPECT_GT(loop.size(), 4U);
    NSRect before = NSMakeRect(0, NSMaxY(pane.bounds), 0, 0);
    for (NSView* view : loop) {
      const NSRect place = [pane convertRect:view.bounds fromView:view];
      const CGFloat below = NSMidY(before) - NSMidY(place);
      const bool isSameRow = below < sameRow && below > -sameRow;
      EXPECT_TRUE(isSameRow ? NSMinX(place) > NSMinX(before) : below > 0)
          << utf8Text(view.description);
      before = place;
    }
  }

  /// Whether Tab goes to every control: the user decides in System Settings, under Keyboard.
  static bool isKeyboardNavigationOn() { return NSApp.fullKeyboardAccessEnabled; }
};

TEST_F(KeyLoopTest, GoesThroughEveryPaneInReadingOrder) {
  expectReadingOrder(keyrow.general().axPermissionButton, keyrow.general().view);
  ASSERT_TRUE(keyrow.selectTab(1));
  expectReadingOrder(keyrow.about().contactButton, keyrow.about().view);
}

TEST_F(KeyLoopTest, TheFirstControlOfEveryPaneHasTheFocus) {
  if (!isKeyboardNavigationOn()) {
    GTEST_SKIP() << "Keyboard navigation is off in System Settings, under Keyboard.";
  }
  [keyrow.general() viewDidAppear];
  EXPECT_EQ(keyrow.window().firstResponder, keyrow.general().axPermissionButton);
  ASSERT_TRUE(keyrow.selectTab(1));
  [keyrow.about() viewDidAppear];
  EXPECT_EQ(keyrow.window().firstResponder, keyrow.about().contactButton);
}

TEST_F(KeyLoopTest, WithoutKeyboardNavigationNoButtonHasTheFocus) {
  if (isKeyboardNavigationOn()) GTEST_SKIP() << "Keyboard navigation is on.";
  [keyrow.general() viewDidAppear];
  EXPECT_FALSE([keyrow.window().firstResponder isKindOfClass:NSButton.class]);
}

}  // namespace
}  // namespace keyrow::macos
