#include "ui/MainMenu.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/KeyEvent.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

/// The items with a key, as "⌘Q Quit Keyrow".
std::vector<std::string> mainMenuKeys() {
  std::vector<std::string> keys;
  for (const auto& menu : mainMenus()) {
    for (const auto& item : menu.items) {
      if (item.key.empty()) continue;
      std::string key{item.key};
      const bool hasShift = std::isupper(static_cast<unsigned char>(key[0])) != 0;
      key[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(key[0])));
      keys.push_back((item.hasOption ? "⌥" : "") + std::string{hasShift ? "⇧" : ""} + "⌘" + key +
                     " " + std::string{item.title});
    }
  }
  return keys;
}

TEST(MainMenuTest, HasTheKeysThatWorkInEveryWindow) {
  EXPECT_THAT(mainMenuKeys(),
              ElementsAre("⌘, Settings…", "⌘H Hide Keyrow", "⌥⌘H Hide Others", "⌘Q Quit Keyrow",
                          "⌘Z Undo", "⇧⌘Z Redo", "⌘X Cut", "⌘C Copy", "⌘V Paste", "⌘A Select All",
                          "⌘W Close", "⌘M Minimize"));
}

TEST(MainMenuTest, EveryActionHasOneItem) {
  std::vector<MainMenuAction> actions;
  for (const auto& menu : mainMenus()) {
    for (const auto& item : menu.items) {
      if (!item.isSeparator()) actions.push_back(item.action);
    }
  }
  const auto count = static_cast<std::size_t>(MainMenuAction::arrangeInFront) + 1;
  EXPECT_EQ(actions.size(), count);
  EXPECT_EQ(std::set(actions.begin(), actions.end()).size(), count);
}

TEST(MainMenuTest, NoSeparatorStandsAtAnEndOrBesideAnother) {
  for (const auto& menu : mainMenus()) {
    bool isAfterSeparator = true;
    for (const auto& item : menu.items) {
      EXPECT_FALSE(isAfterSeparator && item.isSeparator()) << menu.title;
      isAfterSeparator = item.isSeparator();
    }
    EXPECT_FALSE(isAfterSeparator) << menu.title;
  }
}

TEST(MainMenuTest, TheMenusThatTheSystemKnowsAreWhereItIsTold) {
  EXPECT_EQ(mainMenus()[applicationMenuIndex].title, "Keyrow");
  EXPECT_EQ(mainMenus()[windowMenuIndex].title, "Window");
}

class MainMenuControllerTest : public SimulatedMacTest {
 protected:
  SimulatedMainMenuView& menu() { return process->simulatedPlatform().mainMenu; }
  SimulatedSettingsWindowView& window() { return process->settingsWindow(); }

  static KeyDown withCommand(std::string characters, std::uint64_t otherModifiers = 0) {
    KeyDown key;
    key.characters = std::move(characters);
    key.flags = keyEventFlag::command | otherModifiers;
    return key;
  }
};

TEST_F(MainMenuControllerTest, IsThereOnceKeyrowIsLaunched) {
  EXPECT_FALSE(menu().choose("About Keyrow"));
  process->launch();
  EXPECT_TRUE(menu().choose("About Keyrow"));
}

TEST_F(MainMenuControllerTest, ItsKeysLeadWhereItsItemsDo) {
  process->launch();
  EXPECT_FALSE(menu().performKeyEquivalent(withCommand("w")));
  EXPECT_TRUE(menu().performKeyEquivalent(withCommand(",")));
  mac.scheduler.runReady();
  EXPECT_TRUE(window().isVisible());
  for (const auto modifier : {keyEventFlag::shift, keyEventFlag::control, keyEventFlag::option}) {
    EXPECT_FALSE(menu().performKeyEquivalent(withCommand("w", modifier)));
  }
  EXPECT_TRUE(menu().performKeyEquivalent(withCommand("w")));
  EXPECT_FALSE(window().isVisible());
  auto withoutCommand = withCommand("q");
  withoutCommand.flags = 0;
  EXPECT_FALSE(menu().performKeyEquivalent(withoutCommand));
  EXPECT_TRUE(menu().performKeyEquivalent(withCommand("Q", keyEventFlag::alphaShift)));
  EXPECT_TRUE(process->hasEnded());
}

TEST_F(MainMenuControllerTest, OffersWhatCanBeDone) {
  process->launch();
  EXPECT_THAT(menu().enabledTitles(),
              IsSupersetOf({"About Keyrow", "Acknowledgements", "Settings…", "Quit Keyrow"}));
  for (const auto* title : {"Close", "Minimize", "Copy"}) {
    EXPECT_FALSE(menu().choose(title)) << title;
  }
}

TEST_F(MainMenuControllerTest, AboutWithoutAWindowDoesNothing) {
  process->keyrow().settingsWindowController().showAbout();
  EXPECT_EQ(window().selectedTab().title, "General");
}

TEST_F(MainMenuControllerTest, WithoutABundleThereAreNoAcknowledgements) {
  process = std::make_unique<SimulatedProcess>(mac, 502, std::nullopt);
  process->launch();
  const auto before = mac.screen.openedURLs().size();
  EXPECT_TRUE(menu().choose("Acknowledgements"));
  EXPECT_EQ(mac.screen.openedURLs().size(), before);
}

}  // namespace
}  // namespace keyrow::sim
