#include "platform/macos/tests/LayoutFaults.h"
#include "platform/macos/tests/PaneImage.h"
#include "platform/macos/tests/SettingsWindowFixture.h"
#include "ui/SettingsWindowView.h"

namespace keyrow::macos {
namespace {

class SettingsWindowTest : public SettingsWindowFixture {
 protected:
  void SetUp() override { keyrow.createWindow(); }

  static ContentSize contentSize(NSSize size) { return {size.width, size.height}; }

  void expectTheOnlySize() {
    NSWindow* const window = keyrow.window();
    EXPECT_EQ(contentSize(window.contentView.frame.size), keyrow.contentSize());
    EXPECT_EQ(contentSize(window.contentMinSize), keyrow.contentSize());
    EXPECT_EQ(contentSize(window.contentMaxSize), keyrow.contentSize());
  }
};

TEST_F(SettingsWindowTest, IsHiddenAndCanOnlyBeClosedAndMinimised) {
  NSWindow* const window = keyrow.window();
  EXPECT_EQ(utf8Text(window.title), settingsWindowTitle);
  EXPECT_FALSE(window.visible);
  EXPECT_FALSE(window.releasedWhenClosed);
  EXPECT_TRUE(window.styleMask & NSWindowStyleMaskClosable);
  EXPECT_TRUE(window.styleMask & NSWindowStyleMaskMiniaturizable);
  EXPECT_FALSE(window.styleMask & NSWindowStyleMaskResizable);
}

TEST_F(SettingsWindowTest, LooksLikeSettings) {
  NSWindow* const window = keyrow.window();
  EXPECT_EQ(window.titleVisibility, NSWindowTitleVisible);
  EXPECT_TRUE(window.titlebarAppearsTransparent);
  EXPECT_TRUE(window.movableByWindowBackground);
  EXPECT_EQ(window.toolbarStyle, NSWindowToolbarStylePreference);
  EXPECT_EQ(keyrow.tabs().tabStyle, NSTabViewControllerTabStyleToolbar);
  EXPECT_FALSE(keyrow.tabs().canPropagateSelectedChildViewControllerTitle);
}

TEST_F(SettingsWindowTest, HasItsTabs) {
  NSArray<NSTabViewItem*>* const items = keyrow.tabs().tabViewItems;
  ASSERT_EQ(items.count, settingsTabs.size());
  for (std::size_t index = 0; index < settingsTabs.size(); ++index) {
    EXPECT_EQ(utf8Text(items[index].label), settingsTabs[index].title);
    EXPECT_NE(items[index].image, nil);
  }
  EXPECT_EQ(items[0].viewController, keyrow.general());
  EXPECT_EQ(items[1].viewController, keyrow.about());
  EXPECT_EQ(keyrow.tabs().selectedTabViewItemIndex, 0);
}

TEST_F(SettingsWindowTest, HasTheSameTitleAndSizeInEveryTab) {
  expectTheOnlySize();
  for (const NSInteger tab : {1, 0}) {
    ASSERT_TRUE(keyrow.selectTab(tab));
    expectTheOnlySize();
    EXPECT_EQ(utf8Text(keyrow.window().title), settingsWindowTitle);
  }
}

TEST_F(SettingsWindowTest, IsAsHighAsThePanesNeed) {
  const auto size = keyrow.contentSize();
  EXPECT_EQ(size.width, leastSettingsContentSize.width);
  EXPECT_GE(size.height, leastSettingsContentSize.height);
  EXPECT_GE(size.height, keyrow.general().view.fittingSize.height);
  EXPECT_GE(size.height, keyrow.about().view.fittingSize.height);
}

TEST_F(SettingsWindowTest, TheGeneralPaneFillsItWithoutAFault) {
  EXPECT_EQ(contentSize(keyrow.general().view.frame.size), keyrow.contentSize());
  EXPECT_EQ(layoutFaults(keyrow.general().view), "");
}

TEST_F(SettingsWindowTest, TheAboutPaneFillsItWithoutAFault) {
  ASSERT_TRUE(keyrow.selectTab(1));
  EXPECT_EQ(contentSize(keyrow.about().view.frame.size), keyrow.contentSize());
  EXPECT_EQ(layoutFaults(keyrow.about().view), "");
}

TEST_F(SettingsWindowTest, ThePanesCanBeLookedAt) {
  EXPECT_TRUE(writeImage(keyrow.general().view, "settings-general"));
  ASSERT_TRUE(keyrow.selectTab(1));
  EXPECT_TRUE(writeImage(keyrow.about().view, "settings-about"));
}

}  // namespace
}  // namespace keyrow::macos
