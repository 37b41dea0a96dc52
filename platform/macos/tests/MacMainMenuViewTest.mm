#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacMainMenuView.h"

namespace keyrow::macos {
namespace {

class MacMainMenuViewTest : public ::testing::Test, public MainMenuActions {
 protected:
  void SetUp() override {
    view_.setActions(*this);
    view_.create();
  }
  void TearDown() override { NSApp.mainMenu = nil; }

  void showAbout() override { chosen.emplace_back("about"); }
  void showSettings() override { chosen.emplace_back("settings"); }
  void showAcknowledgements() override { chosen.emplace_back("acknowledgements"); }

  static NSMenuItem* itemWithAction(SEL action) {
    for (NSMenuItem* menu in NSApp.mainMenu.itemArray) {
      for (NSMenuItem* item in menu.submenu.itemArray) {
        if (item.action == action) return item;
      }
    }
    return nil;
  }

  static void choose(NSMenuItem* item) { [NSApp sendAction:item.action to:item.target from:item]; }

  std::vector<std::string> chosen;

 private:
  MacMainMenuView view_;
};

TEST_F(MacMainMenuViewTest, HasEveryItemWithItsKey) {
  const auto menus = mainMenus();
  ASSERT_EQ(NSApp.mainMenu.itemArray.count, menus.size());
  for (std::size_t index = 0; index < menus.size(); ++index) {
    NSMenu* const menu = [NSApp.mainMenu itemAtIndex:static_cast<NSInteger>(index)].submenu;
    EXPECT_EQ(utf8Text(menu.title), menus[index].title);
    // The system may add items of its own behind them.
    ASSERT_GE(menu.itemArray.count, menus[index].items.size());
    for (std::size_t place = 0; place < menus[index].items.size(); ++place) {
      const auto& expected = menus[index].items[place];
      NSMenuItem* const item = menu.itemArray[place];
      EXPECT_EQ(item.separatorItem, expected.isSeparator());
      if (expected.isSeparator()) continue;
      EXPECT_EQ(utf8Text(item.title), expected.title);
      EXPECT_EQ(utf8Text(item.keyEquivalent), expected.key);
      EXPECT_NE(item.action, nullptr) << expected.title;
    }
  }
}

TEST_F(MacMainMenuViewTest, ItsOwnItemsLeadWhereTheySay) {
  choose(itemWithAction(@selector(showAbout:)));
  choose(itemWithAction(@selector(showSettings:)));
  choose(itemWithAction(@selector(showAcknowledgements:)));
  EXPECT_EQ(chosen, (std::vector<std::string>{"about", "settings", "acknowledgements"}));
}

TEST_F(MacMainMenuViewTest, TheOthersGoToWhatHasTheFocus) {
  for (const SEL action : { @selector(performClose:), @selector(terminate:), @selector(copy:) }) {
    NSMenuItem* const item = itemWithAction(action);
    ASSERT_NE(item, nil) << sel_getName(action);
    EXPECT_EQ(item.target, nil) << sel_getName(action);
  }
  EXPECT_EQ(NSApp.windowsMenu,
            [NSApp.mainMenu itemAtIndex:static_cast<NSInteger>(windowMenuIndex)].submenu);
}

}  // namespace
}  // namespace keyrow::macos
