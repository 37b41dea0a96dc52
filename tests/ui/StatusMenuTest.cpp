#include "ui/StatusMenu.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace keyrow {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

constexpr std::size_t globalItem = 1;
constexpr std::size_t localItem = 4;

StatusMenuState stateWith(std::optional<FnState> global, std::optional<FnState> local) {
  return {.globalBase = global,
          .localBase = local,
          .hasFrontmostApplication = true,
          .shortcutKey = "`",
          .fnReplacementModifier = std::nullopt};
}

MenuItem item(std::size_t index, const StatusMenuState& state) {
  return makeStatusMenu(state)[index];
}

TEST(StatusMenuTest, HasTheseItemsInThisOrder) {
  std::vector<std::string> titles;
  for (const auto& one : makeStatusMenu(stateWith(FnState::special, FnState::standard))) {
    titles.push_back(one.isSeparator ? "-" : one.title);
  }
  EXPECT_THAT(
      titles,
      ElementsAre("Global Default", "Use F1-F12 by Default", "-", "Frontmost App Only",
                  "Use Media & System Controls in This App Only", "-", "Settings…", "-", "Quit"));
}

TEST(StatusMenuTest, HeadingsCannotBeChosen) {
  for (const std::size_t index : {0U, 3U}) {
    const auto heading = item(index, stateWith(FnState::special, FnState::special));
    EXPECT_FALSE(heading.isEnabled);
    EXPECT_EQ(heading.action, MenuAction::none);
    EXPECT_EQ(heading.keyEquivalent, "");
    EXPECT_FALSE(heading.representedObject);
  }
}

TEST(StatusMenuTest, TheGlobalItemOffersTheOtherMode) {
  const auto toStandard = item(globalItem, stateWith(FnState::special, std::nullopt));
  EXPECT_EQ(toStandard.title, "Use F1-F12 by Default");
  EXPECT_EQ(toStandard.representedObject, 1);
  EXPECT_TRUE(toStandard.isEnabled);
  const auto toSpecial = item(globalItem, stateWith(FnState::standard, std::nullopt));
  EXPECT_EQ(toSpecial.title, "Use Media & System Controls by Default");
  EXPECT_EQ(toSpecial.representedObject, 0);
  EXPECT_TRUE(toSpecial.isEnabled);
}

TEST(StatusMenuTest, TheLocalItemOffersTheOtherMode) {
  const auto toStandard = item(localItem, stateWith(std::nullopt, FnState::special));
  EXPECT_EQ(toStandard.title, "Use F1-F12 in This App Only");
  EXPECT_EQ(toStandard.representedObject, 1);
  EXPECT_TRUE(toStandard.isEnabled);
  const auto toSpecial = item(localItem, stateWith(std::nullopt, FnState::standard));
  EXPECT_EQ(toSpecial.title, "Use Media & System Controls in This App Only");
  EXPECT_EQ(toSpecial.representedObject, 0);
  EXPECT_TRUE(toSpecial.isEnabled);
}

TEST(StatusMenuTest, WithoutABaseModeBothItemsOfferF1ToF12AndAreDisabled) {
  const auto state = stateWith(std::nullopt, std::nullopt);
  EXPECT_EQ(item(globalItem, state).title, "Use F1-F12 by Default");
  EXPECT_EQ(item(globalItem, state).representedObject, 1);
  EXPECT_FALSE(item(globalItem, state).isEnabled);
  EXPECT_EQ(item(localItem, state).title, "Use F1-F12 in This App Only");
  EXPECT_EQ(item(localItem, state).representedObject, 1);
  EXPECT_FALSE(item(localItem, state).isEnabled);
}

TEST(StatusMenuTest, WithoutAnApplicationOnlyTheLocalItemIsDisabled) {
  auto state = stateWith(FnState::standard, FnState::standard);
  state.hasFrontmostApplication = false;
  EXPECT_TRUE(item(globalItem, state).isEnabled);
  EXPECT_FALSE(item(localItem, state).isEnabled);
  EXPECT_EQ(item(localItem, state).title, "Use Media & System Controls in This App Only");
}

TEST(StatusMenuTest, KeyEquivalentsAreHintsWithTheirOwnModifiers) {
  const auto state = stateWith(FnState::standard, FnState::standard);
  const std::vector<std::pair<std::size_t, MenuItem>> expected{
      {globalItem, {.keyEquivalent = "\t", .keyModifier = MenuKeyModifier::function}},
      {localItem, {.keyEquivalent = "\t", .keyModifier = MenuKeyModifier::shift}},
      {6, {.keyEquivalent = ",", .keyModifier = MenuKeyModifier::command}},
      {8, {.keyEquivalent = "q", .keyModifier = MenuKeyModifier::command}}};
  for (const auto& [index, wanted] : expected) {
    EXPECT_EQ(item(index, state).keyEquivalent, wanted.keyEquivalent) << index;
    EXPECT_EQ(item(index, state).keyModifier, wanted.keyModifier) << index;
  }
}

TEST(StatusMenuTest, ItemsDoWhatTheySay) {
  const auto state = stateWith(FnState::standard, FnState::standard);
  EXPECT_EQ(item(globalItem, state).action, MenuAction::handleMenuGlobalSwitch);
  EXPECT_EQ(item(localItem, state).action, MenuAction::handleMenuLocalSwitch);
  EXPECT_EQ(item(6, state).action, MenuAction::openPreferences);
  EXPECT_EQ(item(8, state).action, MenuAction::quit);
  EXPECT_TRUE(item(6, state).isEnabled);
  EXPECT_TRUE(item(8, state).isEnabled);
}

TEST(StatusMenuTest, ToolTipsExplainBothItems) {
  for (const auto base : {std::optional<FnState>{}, std::optional{FnState::special}}) {
    const auto state = stateWith(base, base);
    EXPECT_EQ(item(globalItem, state).toolTip,
              "Changes the global default used by apps without an override.");
    EXPECT_EQ(item(localItem, state).toolTip,
              "Creates or toggles an app-specific override for the frontmost app. Shortcut: Fn+`");
  }
}

TEST(StatusMenuTest, TheShortcutNamesEveryReplacementModifier) {
  const std::vector<std::pair<FnReplacementModifier, std::string>> names{
      {FnReplacementModifier::leftControl, "Left Control"},
      {FnReplacementModifier::rightControl, "Right Control"},
      {FnReplacementModifier::leftOption, "Left Option"},
      {FnReplacementModifier::rightOption, "Right Option"},
      {FnReplacementModifier::leftCommand, "Left Command"},
      {FnReplacementModifier::rightCommand, "Right Command"},
      {FnReplacementModifier::leftShift, "Left Shift"},
      {FnReplacementModifier::rightShift, "Right Shift"}};
  for (const auto& [modifier, name] : names) {
    auto state = stateWith(FnState::special, FnState::special);
    state.shortcutKey = "F5";
    state.fnReplacementModifier = modifier;
    EXPECT_THAT(item(localItem, state).toolTip, EndsWith(" Shortcut: Fn+F5 or " + name + "+F5"));
  }
}

}  // namespace
}  // namespace keyrow
