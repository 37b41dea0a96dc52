#include "platform/macos/tests/SettingsWindowFixture.h"
#include "ui/AboutLayout.h"

namespace keyrow::macos {
namespace {

namespace layout = aboutLayout;

class AboutPaneTest : public SettingsWindowFixture {
 protected:
  AboutViewController* pane() { return keyrow.about(); }

  void open() {
    keyrow.createWindow();
    ASSERT_TRUE(keyrow.selectTab(1));
  }
};

TEST_F(AboutPaneTest, ShowsEveryControl) {
  open();
  for (NSView* view in @[
         pane().appIconView, pane().descriptionLabel, pane().versionLabel,
         pane().contactActionsStack, pane().contactButton, pane().reportBugButton,
         pane().checkUpdatesButton
       ]) {
    expectShown(view, pane().view);
  }
  expectRows(pane(), layout::rows);
  EXPECT_NE(pane().appIconView.image, nil);
}

TEST_F(AboutPaneTest, HasItsTexts) {
  open();
  EXPECT_EQ(textOf(pane().descriptionLabel), layout::descriptionText);
  // These tests are no bundle with a version.
  EXPECT_EQ(textOf(pane().versionLabel), "Version 0.0");
  EXPECT_EQ(titleOf(pane().contactButton), layout::contactTitle);
  EXPECT_EQ(titleOf(pane().reportBugButton), layout::reportBugTitle);
  EXPECT_EQ(titleOf(pane().checkUpdatesButton), layout::checkUpdatesTitle);
}

TEST_F(AboutPaneTest, ShowsWhatIsSet) {
  for (const auto& row : booleanSettingTable) keyrow.settings().set(row.setting, true);
  keyrow.updateFramework.checksAutomatically = true;
  open();
  for (const auto& checkbox : checkboxesOf(layout::rows)) {
    EXPECT_TRUE(isOn([pane() checkboxOf:checkbox.what])) << checkbox.title;
  }
}

TEST_F(AboutPaneTest, EveryCheckboxSetsItsOwnSwitch) {
  open();
  expectToggles(pane(), layout::rows);
}

TEST_F(AboutPaneTest, TheButtonsDoWhatTheySay) {
  open();
  [pane().contactButton performClick:nil];
  ASSERT_EQ(keyrow.workspace.openedURLs.size(), 1U);
  EXPECT_TRUE(keyrow.workspace.openedURLs[0].starts_with("mailto:"));

  [pane().reportBugButton performClick:nil];
  ASSERT_EQ(keyrow.mailComposer.drafts.size(), 1U);
  EXPECT_EQ(keyrow.mailComposer.drafts[0].subject, "Keyrow Bug Report");
  EXPECT_EQ(keyrow.files.files.size(), 1U);

  [pane().checkUpdatesButton performClick:nil];
  ASSERT_EQ(keyrow.alerts.messages.size(), 1U);
  EXPECT_EQ(keyrow.alerts.messages[0], "Sparkle feed not configured");
}

}  // namespace
}  // namespace keyrow::macos
