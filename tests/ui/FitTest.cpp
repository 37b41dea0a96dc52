#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/KeyNames.h"
#include "tests/SimulatedMacTest.h"
#include "ui/GeneralLayout.h"

namespace keyrow::sim {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Not;

/// The system font as it was measured, and as wide as it may be at most; with the push buttons
/// of macOS 13 to 15, and of macOS 26.
struct FontAndButtons {
  double stretch;
  double pushButtonExtent;
};

class FitTest : public SimulatedMacTest, public ::testing::WithParamInterface<FontAndButtons> {
 protected:
  void SetUp() override {
    mac.systemFont.stretch = GetParam().stretch;
    mac.pushButtonExtent = GetParam().pushButtonExtent;
    process->launch();
    keyrow().settingsWindowController().show();
    mac.scheduler.runReady();
  }

  SimulatedGeneralView& general() { return process->simulatedPlatform().general; }
  SimulatedAboutView& about() { return process->simulatedPlatform().about; }
  ContentSize windowSize() { return process->settingsWindow().contentSize(); }
};

TEST_P(FitTest, TheWindowIsAsHighAsTheTallestStateNeeds) {
  const double twoButtons = 2 * (GetParam().pushButtonExtent - 20);
  EXPECT_EQ(windowSize(), (ContentSize{420, 418 + twoButtons}));
}

TEST_P(FitTest, EveryModifierFits) {
  std::vector<double> heights;
  for (const auto& item : fnReplacementItems()) {
    if (item.isSeparator) continue;
    ASSERT_TRUE(general().chooseFnReplacement(item.title));
    heights.push_back(general().fittingHeight());
    EXPECT_LE(heights.back(), windowSize().height) << item.title;
    EXPECT_EQ(windowSize(), keyrow().settingsWindowController().contentSize());
  }
  EXPECT_THAT(heights, Contains(windowSize().height));
}

TEST_P(FitTest, TheAboutPaneFits) {
  process->settingsWindow().selectTab("About");
  EXPECT_LE(about().fittingHeight(), leastSettingsContentSize.height);
}

TEST_P(FitTest, ThePopoverIsAsHighAsItsText) { EXPECT_EQ(general().popoverHeight(), 136); }

TEST_P(FitTest, MeasuringLeavesWhatIsSet) {
  keyrow().settings().setFnReplacementModifier(FnReplacementModifier::leftShift);
  process = std::make_unique<SimulatedProcess>(mac, 502);
  SetUp();
  EXPECT_TRUE(general().fnReplacementHint.starts_with("Use Left Shift with Esc"));
  EXPECT_TRUE(general().localShortcutHint.starts_with("Use Fn or Left Shift plus"));
}

TEST_P(FitTest, ATitleThatIsCutIsToldWhole) {
  std::vector<std::string> cut;
  const auto look = [&] {
    if (general().isLocalShortcutTitleCut()) {
      cut.push_back(general().localShortcutTitle);
      EXPECT_EQ(general().localShortcutTip, general().localShortcutTitle);
    } else {
      EXPECT_EQ(general().localShortcutTip, "") << general().localShortcutTitle;
    }
  };
  general().actions().toggleLocalShortcutCapture();
  look();
  general().actions().toggleLocalShortcutCapture();
  for (const auto& key : keyNames()) {
    keyrow().settings().setLocalToggleShortcut(
        {key.keyCode, std::string{key.displayName}, std::nullopt});
    general().actions().viewDidAppear();
    look();
  }
  EXPECT_THAT(cut, AllOf(Contains("Press any key..."), Contains("Fn + Forward Delete"),
                         Contains("Fn + Page Up"), Contains("Fn + Left Arrow"),
                         Not(Contains("Fn + F12")), Not(Contains("Fn + A"))));
}

INSTANTIATE_TEST_SUITE_P(AllMacs, FitTest,
                         ::testing::Values(FontAndButtons{1.00, 20}, FontAndButtons{1.02, 20},
                                           FontAndButtons{1.00, 24}, FontAndButtons{1.02, 24}));

TEST(SystemFontTest, WrapsBetweenWords) {
  const SystemFont font;
  const auto width = font.textWidth("one two", FontSize::system);
  EXPECT_EQ(font.lineCount("", FontSize::system, width), 1);
  EXPECT_EQ(font.lineCount("one two", FontSize::system, width), 1);
  EXPECT_EQ(font.lineCount("one two", FontSize::system, width - 0.1), 2);
  EXPECT_EQ(font.lineCount("one two one two", FontSize::system, width), 2);
  // A word that fits nowhere has a line of its own.
  EXPECT_EQ(font.lineCount("a unbreakable b", FontSize::system, 20), 3);
  EXPECT_EQ(font.lineCount("unbreakable", FontSize::system, 20), 1);
}

TEST(SystemFontTest, CharactersThatInterLacksAreAsWideAsTheyAreHigh) {
  const SystemFont font;
  EXPECT_DOUBLE_EQ(font.textWidth("漢", FontSize::system), 13 * 0.990 * 1.02);
  EXPECT_DOUBLE_EQ(font.textWidth("é", FontSize::system), 13 * 0.990 * 1.02);
}

}  // namespace
}  // namespace keyrow::sim
