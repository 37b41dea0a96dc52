#include "ui/SettingsWindowController.h"

#include <gmock/gmock.h>

#include <optional>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class SettingsWindowControllerTest : public SimulatedMacTest {
 protected:
  void SetUp() override { controller().createWindow(); }

  /// What the tallest state of the panes takes.
  static constexpr ContentSize theOnlySize{420, 418};

  SettingsWindowController& controller() { return keyrow().settingsWindowController(); }
  SimulatedSettingsWindowView& window() { return process->settingsWindow(); }
};

TEST_F(SettingsWindowControllerTest, TheWindowIsHiddenUntilItIsShown) {
  EXPECT_FALSE(window().isVisible());
  controller().show();
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().selectedTab().title, "General");
}

TEST_F(SettingsWindowControllerTest, ShowingManyTimesMakesNoSecondWindow) {
  for (int time = 0; time < 5; ++time) controller().show();
  mac.scheduler.runReady();
  EXPECT_EQ(window().createdCount(), 1);
}

TEST_F(SettingsWindowControllerTest, ComesForwardNowAndOnceMoreFromTheMainQueue) {
  mac.trace.start();
  controller().show();
  const std::vector<std::string> forward{"activate all windows", "activate ignoring other apps",
                                         "bring settings window to the front"};
  EXPECT_EQ(mac.trace.take(), forward);
  mac.scheduler.runReady();
  // Active now, the pane looks at the permissions.
  EXPECT_THAT(mac.trace.take(), ElementsAre("is process trusted", "check input monitoring",
                                            forward[0], forward[1], forward[2]));
  mac.scheduler.advance(std::chrono::hours{1});
  EXPECT_THAT(mac.trace.take(), ElementsAre());
}

TEST_F(SettingsWindowControllerTest, EveryTabHasTheSameSize) {
  controller().show();
  EXPECT_EQ(window().contentSize(), theOnlySize);
  for (const auto* tab : {"About", "General", "About"}) {
    ASSERT_TRUE(window().selectTab(tab));
    EXPECT_EQ(window().contentSize(), theOnlySize) << tab;
  }
}

TEST_F(SettingsWindowControllerTest, ClosedAndShownAgainItKeepsItsTabAndSize) {
  controller().show();
  window().selectTab("About");
  window().close();
  EXPECT_FALSE(window().isVisible());
  controller().show();
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().selectedTab().title, "About");
  EXPECT_EQ(window().contentSize(), theOnlySize);
}

TEST_F(SettingsWindowControllerTest, ItsTitleAndTabsAreFixed) {
  EXPECT_EQ(settingsWindowTitle, "Settings");
  EXPECT_EQ(settingsTabs[0].symbolName, "gearshape");
  EXPECT_EQ(settingsTabs[1].title, "About");
  EXPECT_EQ(settingsTabs[1].symbolName, "info.circle");
}

TEST(SettingsWindowControllerBeforeItsWindowTest, ShowsNothing) {
  SimulatedMac mac;
  SimulatedProcess process{mac, 501};
  mac.trace.start();
  process.keyrow().settingsWindowController().show();
  mac.scheduler.runReady();
  EXPECT_THAT(mac.trace.take(), ElementsAre());
}

TEST(SettingsWindowControllerThatIsGoneTest, DoesNotComeForwardOnceMore) {
  SimulatedMac mac;
  SimulatedProcess process{mac, 501};
  const auto& platform = process.platform();
  std::optional<SettingsWindowController> controller{
      std::in_place, SettingsWindowController::Uses{.view = process.settingsWindow(),
                                                    .application = platform.application,
                                                    .mainQueue = platform.mainQueue,
                                                    .tallestPane = [] { return 400.0; }}};
  process.settingsWindow().setActions(*controller);
  controller->createWindow();
  controller->show();
  controller.reset();
  mac.trace.start();
  mac.scheduler.runReady();
  EXPECT_THAT(mac.trace.take(), Not(Contains("bring settings window to the front")));
}

}  // namespace
}  // namespace keyrow::sim
