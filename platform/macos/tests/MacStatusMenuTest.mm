#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacStatusItemView.h"
#include "platform/macos/tests/ReplacedMethod.h"

namespace keyrow::macos {
namespace {

/// The menu is looked at instead of being popped up.
class MacStatusMenuTest : public ::testing::Test, public StatusItemActions {
 protected:
  MacStatusItemView view;
  NSMenu* menu = nil;
  NSPoint place = NSZeroPoint;
  NSView* anchor = nil;
  std::vector<std::string> done;

  const ReplacedMethod popUp {
    class_getInstanceMethod(NSMenu.class, @selector(popUpMenuPositioningItem:atLocation:inView:)),
        ^BOOL(NSMenu* shown, NSMenuItem*, NSPoint location, NSView* inView) {
          this->menu = shown;
          this->place = location;
          this->anchor = inView;
          return YES;
        }
  };

  void SetUp() override {
    view.setActions(*this);
    view.create();
  }

  void statusBarButtonClicked(ClickEvent, bool) override {}
  void showMenu() override {}
  void handleMenuGlobalSwitch(const std::optional<PropertyValue>& mode) override {
    done.push_back("global " + text(mode));
  }
  void handleMenuLocalSwitch(const std::optional<PropertyValue>& mode) override {
    done.push_back("local " + text(mode));
  }
  void openPreferences() override { done.emplace_back("settings"); }
  void quit() override { done.emplace_back("quit"); }
  void menuDidClose() override { done.emplace_back("closed"); }

  static std::string text(const std::optional<PropertyValue>& value) {
    const auto* integer = value ? value->integer() : nullptr;
    return integer ? std::to_string(*integer) : "nothing";
  }

  /// Builds the menu, which is nil where there is no menu bar.
  void show(const std::vector<MenuItem>& items) { view.popUpMenu(items); }

  void choose(NSInteger index) { [menu performActionForItemAtIndex:index]; }
};

#define SKIP_WITHOUT_MENU_BAR() \
  if (!menu) GTEST_SKIP() << "There is no menu bar here."

TEST_F(MacStatusMenuTest, HasTheItemsAsTheyAreTold) {
  show({{.title = "Heading", .isEnabled = false},
        {.isSeparator = true},
        {.title = "Naïve 😀", .action = MenuAction::quit, .keyEquivalent = "q", .toolTip = "Tip"}});
  SKIP_WITHOUT_MENU_BAR();
  ASSERT_EQ(menu.numberOfItems, 3);
  NSMenuItem* const heading = menu.itemArray[0];
  EXPECT_EQ(utf8Text(heading.title), "Heading");
  EXPECT_FALSE(heading.enabled);
  EXPECT_EQ(heading.action, nullptr);
  EXPECT_EQ(heading.toolTip, nil);
  EXPECT_EQ(heading.representedObject, nil);
  EXPECT_TRUE(menu.itemArray[1].separatorItem);
  NSMenuItem* const item = menu.itemArray[2];
  EXPECT_EQ(utf8Text(item.title), "Naïve 😀");
  EXPECT_TRUE(item.enabled);
  EXPECT_EQ(utf8Text(item.keyEquivalent), "q");
  EXPECT_EQ(utf8Text(item.toolTip), "Tip");
}

TEST_F(MacStatusMenuTest, ShowsEachModifierBesideItsKey) {
  show({{.title = "1", .keyEquivalent = ",", .keyModifier = MenuKeyModifier::command},
        {.title = "2", .keyEquivalent = "\x1B", .keyModifier = MenuKeyModifier::function},
        {.title = "3", .keyEquivalent = "`", .keyModifier = MenuKeyModifier::shift}});
  SKIP_WITHOUT_MENU_BAR();
  ASSERT_EQ(menu.numberOfItems, 3);
  EXPECT_EQ(menu.itemArray[0].keyEquivalentModifierMask, NSEventModifierFlagCommand);
  EXPECT_EQ(menu.itemArray[1].keyEquivalentModifierMask, NSEventModifierFlagFunction);
  EXPECT_EQ(menu.itemArray[2].keyEquivalentModifierMask, NSEventModifierFlagShift);
}

TEST_F(MacStatusMenuTest, AChosenItemDoesWhatItSays) {
  show({{.title = "1", .action = MenuAction::handleMenuGlobalSwitch, .representedObject = 1},
        {.title = "2", .action = MenuAction::handleMenuGlobalSwitch, .representedObject = 0},
        {.title = "3", .action = MenuAction::handleMenuLocalSwitch, .representedObject = 1},
        {.title = "4", .action = MenuAction::handleMenuLocalSwitch},
        {.title = "5", .action = MenuAction::openPreferences},
        {.title = "6", .action = MenuAction::quit}});
  SKIP_WITHOUT_MENU_BAR();
  for (NSInteger index = 0; index < menu.numberOfItems; ++index) choose(index);
  EXPECT_EQ(done, (std::vector<std::string>{"global 1", "global 0", "local 1", "local nothing",
                                            "settings", "quit"}));
}

TEST_F(MacStatusMenuTest, LiesUnderItsButtonAndTellsWhenItCloses) {
  show({{.title = "1"}});
  SKIP_WITHOUT_MENU_BAR();
  EXPECT_TRUE([anchor isKindOfClass:NSStatusBarButton.class]);
  EXPECT_EQ(place.x, statusMenuX);
  EXPECT_EQ(place.y, NSStatusBar.systemStatusBar.thickness);
  EXPECT_NE(menu.appearance, nil);
  ASSERT_TRUE([menu.delegate respondsToSelector:@selector(menuDidClose:)]);
  [menu.delegate menuDidClose:menu];
  EXPECT_EQ(done, (std::vector<std::string>{"closed"}));
}

}  // namespace
}  // namespace keyrow::macos
