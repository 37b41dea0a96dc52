#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/SimulatedMacTest.h"
#include "ui/AboutLayout.h"
#include "ui/BugReport.h"
#include "ui/FnReplacementMenu.h"
#include "ui/GeneralLayout.h"
#include "ui/VersionText.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

class PanesTest : public SimulatedMacTest {
 protected:
  void SetUp() override {
    process->launch();
    keyrow().settingsWindowController().show();
    mac.scheduler.runReady();
  }

  SimulatedGeneralView& general() { return process->simulatedPlatform().general; }
  SimulatedAboutView& about() { return process->simulatedPlatform().about; }

  /// What is on, by what can be switched.
  std::map<Switch, bool> states() {
    std::map<Switch, bool> all{
        {OtherSwitch::loginItem, mac.loginItems["me"] == LoginItemStatus::enabled},
        {OtherSwitch::automaticUpdates, keyrow().updater().automaticChecksEnabled()}};
    for (const auto& row : booleanSettingTable) {
      all[row.setting] = keyrow().settings().isOn(row.setting);
    }
    return all;
  }

  std::string version(std::optional<PropertyValue> shortVersion,
                      std::optional<PropertyValue> build) {
    mac.infoDictionary.clear();
    if (shortVersion) mac.infoDictionary.emplace("CFBundleShortVersionString", *shortVersion);
    if (build) mac.infoDictionary.emplace("CFBundleVersion", *build);
    return versionText(process->platform().bundle);
  }
};

TEST_F(PanesTest, ThePopUpHasTheLeftHandBeforeTheRight) {
  std::vector<std::string> items;
  for (const auto& item : general().fnReplacementItems) {
    items.push_back(item.isSeparator
                        ? "-"
                        : std::string{item.title} + "=" + std::string{item.representedObject});
  }
  EXPECT_THAT(items, ElementsAre("Off=", "-", "Left Control=leftControl", "Left Option=leftOption",
                                 "Left Command=leftCommand", "Left Shift=leftShift", "-",
                                 "Right Control=rightControl", "Right Option=rightOption",
                                 "Right Command=rightCommand", "Right Shift=rightShift"));
}

TEST_F(PanesTest, EveryItemOfThePopUpStoresAndSelectsItself) {
  for (const auto& item : fnReplacementItems()) {
    if (item.isSeparator) continue;
    ASSERT_TRUE(general().chooseFnReplacement(item.title)) << item.title;
    EXPECT_EQ(general().fnReplacementItems[general().selectedFnReplacementItem].title, item.title);
    EXPECT_EQ(stored("fnReplacementModifier"), item.representedObject.empty()
                                                   ? std::optional<PropertyValue>{}
                                                   : PropertyValue{item.representedObject});
  }
}

TEST_F(PanesTest, ChoosingWhatIsNoModifierIsOff) {
  for (const std::optional<PropertyValue>& object :
       std::vector<std::optional<PropertyValue>>{std::nullopt, "", "middleCommand", 3, true}) {
    store("fnReplacementModifier", "leftShift");
    general().actions().changeFnReplacementModifier(object);
    EXPECT_EQ(stored("fnReplacementModifier"), std::nullopt);
    EXPECT_EQ(general().selectedFnReplacementItem, 0U);
  }
}

TEST_F(PanesTest, ResetIsOnlyOfferedForAnotherShortcutOrAnotherName) {
  EXPECT_FALSE(general().isResetEnabled);
  keyrow().settings().setLocalToggleShortcut({50, "§", std::nullopt});
  general().actions().toggleLocalShortcutCapture();
  general().actions().toggleLocalShortcutCapture();
  EXPECT_TRUE(general().isResetEnabled);
  EXPECT_EQ(general().localShortcutTitle, "Fn + §");
  // What only the menu shows is no other shortcut.
  keyrow().settings().setLocalToggleShortcut({50, "`", std::nullopt});
  general().actions().toggleLocalShortcutCapture();
  general().actions().toggleLocalShortcutCapture();
  EXPECT_FALSE(general().isResetEnabled);
  keyrow().settings().setLocalToggleShortcut({10, "`", std::nullopt});
  general().actions().toggleLocalShortcutCapture();
  general().actions().toggleLocalShortcutCapture();
  EXPECT_TRUE(general().isResetEnabled);
}

TEST_F(PanesTest, EveryCheckboxShowsAndSetsItsOwnSwitch) {
  const auto expectAll = [this](auto& pane, const auto& rows) {
    for (const auto& checkbox : checkboxesOf(rows)) {
      for (int time = 0; time < 2; ++time) {
        const auto before = states();
        ASSERT_TRUE(pane.click(checkbox.title)) << checkbox.title;
        auto expected = before;
        expected[checkbox.what] = !before.at(checkbox.what);
        EXPECT_EQ(states(), expected) << checkbox.title;
        EXPECT_EQ(pane.isChecked(checkbox.what), expected[checkbox.what]) << checkbox.title;
      }
    }
  };
  process->settingsWindow().selectTab("About");
  expectAll(general(), generalLayout::rows);
  expectAll(about(), aboutLayout::rows);
}

TEST_F(PanesTest, TheyShowWhatIsOnWhenTheyAreLoaded) {
  for (const auto& row : booleanSettingTable) store(row.key, true);
  store(settingsKey::SUEnableAutomaticChecks, true);
  mac.loginItems["me"] = LoginItemStatus::enabled;
  process = std::make_unique<SimulatedProcess>(mac, 502);
  SetUp();
  process->settingsWindow().selectTab("About");
  for (const auto& checkbox : checkboxesOf(generalLayout::rows)) {
    EXPECT_TRUE(general().isChecked(checkbox.what)) << checkbox.title;
  }
  for (const auto& checkbox : checkboxesOf(aboutLayout::rows)) {
    EXPECT_TRUE(about().isChecked(checkbox.what)) << checkbox.title;
  }
}

TEST_F(PanesTest, TheyTellWhatCanBeClicked) {
  const auto titles = [](const auto& pane) {
    std::vector<std::string> all;
    for (const auto& control : pane.controls()) {
      all.push_back(control.title + (control.isEnabled ? "" : " (disabled)"));
    }
    return all;
  };
  EXPECT_THAT(
      titles(general()),
      ElementsAre("Accessibility Permission", "?", "Launch at login", "Show Caps Lock indicator",
                  "Apply Fn function to non-Apple vendor external F keys", "Fn + `",
                  "Reset (disabled)", "Quit"));
  EXPECT_THAT(titles(about()),
              ElementsAre("Contact", "Report a Bug", "Include enhanced diagnostics in logs",
                          "Automatically check for updates", "Check for Updates"));
}

TEST_F(PanesTest, AClickOnWhatIsDisabledOrNotThereChangesNothing) {
  const auto before = mac.defaults.writeCount();
  EXPECT_FALSE(general().click("Reset"));
  EXPECT_FALSE(general().click("Launch"));
  EXPECT_FALSE(general().click("Contact"));
  EXPECT_FALSE(about().click("Quit"));
  EXPECT_EQ(mac.defaults.writeCount(), before);
  EXPECT_FALSE(process->hasEnded());
}

TEST_F(PanesTest, TheMonitorStaysUntilTheNextKeyAfterTheRecordedOne) {
  constexpr std::uint16_t keyT = 17;
  const auto press = [this] {
    mac.postKeyEvent(keyEventType::keyDown, {.timestamp = mac.machAbsoluteTime(), .keyCode = keyT});
  };
  const auto before = mac.openHandles.count("observer");
  general().actions().toggleLocalShortcutCapture();
  press();
  EXPECT_EQ(mac.openHandles.count("observer"), before + 1);
  press();
  EXPECT_EQ(mac.openHandles.count("observer"), before);
}

TEST_F(PanesTest, CapturingHoldsOneMonitorAndGivesItBack) {
  const auto before = mac.openHandles.count("observer");
  general().actions().toggleLocalShortcutCapture();
  EXPECT_EQ(mac.openHandles.count("observer"), before + 1);
  general().actions().toggleLocalShortcutCapture();
  EXPECT_EQ(mac.openHandles.count("observer"), before);
  general().actions().resetLocalShortcut();
  EXPECT_EQ(mac.openHandles.count("observer"), before);
}

TEST_F(PanesTest, CommandMakesNoShortcutOfWAndQWhetherCapsLockIsOnOrNot) {
  const auto type = [this](std::uint16_t keyCode) {
    general().actions().toggleLocalShortcutCapture();
    ASSERT_EQ(general().localShortcutTitle, "Press any key...");
    mac.postKeyEvent(keyEventType::keyDown,
                     {.timestamp = mac.machAbsoluteTime(),
                      .flags = keyEventFlag::command | keyEventFlag::alphaShift,
                      .keyCode = keyCode});
  };
  constexpr std::uint16_t keyQ = 12;
  constexpr std::uint16_t keyW = 13;
  type(keyW);
  EXPECT_FALSE(process->settingsWindow().isVisible());
  EXPECT_EQ(general().localShortcutTitle, "Fn + `");
  type(keyQ);
  EXPECT_TRUE(process->hasEnded());
  EXPECT_EQ(stored("localToggleShortcutKeyCode"), std::nullopt);
}

TEST_F(PanesTest, WithFurtherModifiersWAndQAreKeysAsAllOthersAre) {
  constexpr std::uint16_t keyW = 13;
  for (const auto modifier : {keyEventFlag::shift, keyEventFlag::control, keyEventFlag::option,
                              keyEventFlag::secondaryFn}) {
    general().actions().resetLocalShortcut();
    general().actions().toggleLocalShortcutCapture();
    mac.postKeyEvent(keyEventType::keyDown, {.timestamp = mac.machAbsoluteTime(),
                                             .flags = keyEventFlag::command | modifier,
                                             .keyCode = keyW});
    EXPECT_EQ(general().localShortcutTitle, "Fn + W");
    EXPECT_TRUE(process->settingsWindow().isVisible());
  }
}

TEST_F(PanesTest, TheVersionNamesWhatThereIs) {
  EXPECT_EQ(version("1.2", "45"), "1.2 (45)");
  EXPECT_EQ(version("1.2", std::nullopt), "1.2");
  EXPECT_EQ(version("1.2", ""), "1.2");
  EXPECT_EQ(version("", "45"), "0.0 (45)");
  EXPECT_EQ(version(std::nullopt, std::nullopt), "0.0");
  EXPECT_EQ(version(1, true), "0.0");
}

TEST_F(PanesTest, TheBugReportReadsAsItShould) {
  about().click("Report a Bug");
  process->settingsWindow().selectTab("About");
  about().click("Report a Bug");
  ASSERT_EQ(mac.mailbox.drafts.size(), 2U);
  const auto& draft = mac.mailbox.drafts.back();
  EXPECT_EQ(draft.recipient, "support@keyrow.example");
  EXPECT_EQ(draft.subject, "Keyrow Bug Report");
  EXPECT_EQ(draft.body,
            "Summary:\n\nWhat happened?\n\nExpected result:\n\nSteps to reproduce:\n1.\n2.\n3.\n\n"
            "Reproducibility:\nEvery time / Sometimes / Only once\n\nEnvironment:\n"
            "Keyrow version: " KEYROW_VERSION
            " (1)\nmacOS version: Version 14.2 (Build 23C64)\n"
            "Frontmost app when the issue happened:\nExternal keyboard: Yes / No\n"
            "Apple external keyboard: Yes / No / Unknown\n"
            "Accessibility permission granted: Yes / No / Unsure\n"
            "Input Monitoring permission granted: Yes / No / Unsure\n"
            "Enhanced diagnostics enabled: No\n\nAttachments:\n"
            "A recent Keyrow log file should already be attached to this draft.");
  // Both in the same second, so the second took the place of the first.
  EXPECT_EQ(draft.attachment, "/tmp/Keyrow-log-report-2024-03-01T08:00:00Z.txt");
  EXPECT_EQ(mac.files.size(), 1U);
}

TEST_F(PanesTest, OnlyTheLastMailServiceIsKept) {
  for (int report = 0; report < 3; ++report) about().click("Report a Bug");
  EXPECT_EQ(mac.openHandles.count("mail service"), 1);
}

TEST_F(PanesTest, WithoutAMailServiceTheLinkCarriesTheText) {
  // None, and one that cannot do it.
  for (const auto service : {Mailbox::Service::missing, Mailbox::Service::refuses}) {
    mac.mailbox.service = service;
    const auto before = mac.screen.openedURLs().size();
    about().click("Report a Bug");
    ASSERT_EQ(mac.screen.openedURLs().size(), before + 1);
    const auto& url = mac.screen.openedURLs().back();
    EXPECT_TRUE(url.starts_with(
        "mailto:support@keyrow.example?subject=Keyrow%20Bug%20Report&body=Summary%3A%0A%0AWhat"))
        << url;
    EXPECT_TRUE(url.ends_with("attached%20to%20this%20draft.")) << url;
  }
}

TEST_F(PanesTest, SettingsOfTheWrongTypeReadAsTheirAbsentValue) {
  const std::vector<PropertyValue> values{"on", PropertyDictionary{{"a", 1}}, PropertyDictionary{},
                                          "", "7"};
  for (const auto key : settingsKey::all) {
    for (const auto& value : values) {
      store(key, value);
      auto& settings = keyrow().settings();
      for (const auto& row : booleanSettingTable) EXPECT_FALSE(settings.isOn(row.setting)) << key;
      EXPECT_EQ(settings.fnReplacementModifier(), std::nullopt) << key;
      EXPECT_EQ(settings.localToggleShortcut(), defaultLocalToggleShortcut()) << key;
      const auto current = keyrow().keySettings().current();
      EXPECT_EQ(current.localToggleShortcutKeyCode, graveAccentKeyCode) << key;
      EXPECT_FALSE(current.applyFnModeToExternalFunctionKeys) << key;
      keyrow().modePolicy().applyStoredFnState();
      general().actions().viewDidLoad();
      EXPECT_EQ(general().localShortcutTitle, "Fn + `") << key;
      store(key, std::nullopt);
    }
  }
}

}  // namespace
}  // namespace keyrow::sim
