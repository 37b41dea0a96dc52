#include "input/KeyEventHandler.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <utility>

#include "tests/input/KeyEventFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using namespace keyEventType;
constexpr auto fn = keyEventFlag::secondaryFn;

class KeyEventHandlerTest : public KeyEventFixture {
 protected:
  /// Whether the event's keyboard is asked for: that forgets an input from long before it.
  bool asksForTheKeyboard(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags = 0) {
    useKeyboard({{"Transport", "USB"}, {"Built-In", false}});
    const auto timeOfInput = mac.machAbsoluteTime();
    mac.scheduler.advance(std::chrono::seconds{10});
    passesAndRuns(type, keyCode, flags);
    return keyrow().keyboardSourceMonitor().source(timeOfInput) == nullptr;
  }
};

TEST_F(KeyEventHandlerTest, AnOrdinaryKeyPasses) {
  EXPECT_TRUE(passesAndRuns(keyDown, keyA));
  EXPECT_TRUE(passesAndRuns(keyUp, keyA));
  EXPECT_TRUE(passesAndRuns(flagsChanged, 63, fn));
  EXPECT_TRUE(passesAndRuns(keyDown, keyA, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
}

TEST_F(KeyEventHandlerTest, FnEscapeClearsOnceAndIsSwallowedBothWays) {
  storeOverride(textEdit, FnState::standard);
  EXPECT_FALSE(passesAndRuns(keyDown, keyEscape, fn));
  EXPECT_EQ(stored("localFnState"), PropertyValue{PropertyDictionary{}});
  EXPECT_FALSE(passesAndRuns(keyUp, keyEscape, fn));
  // What was stored behind its back goes first.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0));
}

TEST_F(KeyEventHandlerTest, FnEscapeWithoutAnOverrideFlipsTheGlobalMode) {
  EXPECT_FALSE(passesAndRuns(keyDown, keyEscape, fn));
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
}

TEST_F(KeyEventHandlerTest, FnAndTheKeyToggleTheOverrideAndAreSwallowedBothWays) {
  EXPECT_FALSE(passesAndRuns(keyDown, keyGrave, fn));
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 1}}));
  EXPECT_FALSE(passesAndRuns(keyUp, keyGrave, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
}

TEST_F(KeyEventHandlerTest, NothingHappensBeforeTheMainQueueGetsToIt) {
  EXPECT_FALSE(passes(keyDown, keyGrave, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
  mac.scheduler.runReady();
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
}

TEST_F(KeyEventHandlerTest, EveryRepeatTogglesAgain) {
  for (int time = 0; time < 10; ++time) EXPECT_FALSE(passesAndRuns(keyDown, keyGrave, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0, 1, 0, 1, 0, 1, 0, 1, 0));
}

TEST_F(KeyEventHandlerTest, EveryRepeatOfFnEscapeTogglesAgain) {
  for (int time = 0; time < 4; ++time) EXPECT_FALSE(passesAndRuns(keyDown, keyEscape, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0, 1, 0));
}

TEST_F(KeyEventHandlerTest, FnEscapeNamesItsKeyboard) {
  storeOverride(textEdit, FnState::standard);
  keyrow().modePolicy().applyStoredFnState();
  for (int time = 0; time < 2; ++time) {
    passesAndRuns(keyDown, keyEscape, fn);
    EXPECT_THAT(logLines().back(), EndsWith(" source=external keyboard."));
  }
}

TEST_F(KeyEventHandlerTest, ModifierChangesAreNeverSwallowed) {
  EXPECT_TRUE(passesAndRuns(flagsChanged, keyEscape, fn));
  EXPECT_TRUE(passesAndRuns(flagsChanged, keyGrave, fn));
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
}

TEST_F(KeyEventHandlerTest, WithoutFnTheKeysPass) {
  for (const std::uint64_t flags : {std::uint64_t{0}, keyEventFlag::command | 0x8}) {
    EXPECT_TRUE(passesAndRuns(keyDown, keyEscape, flags));
    EXPECT_TRUE(passesAndRuns(keyDown, keyGrave, flags));
  }
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
}

TEST_F(KeyEventHandlerTest, TheCommandNamesTheKeyboardThatIssuedIt) {
  passesAndRuns(keyDown, keyGrave, fn);
  EXPECT_THAT(logLines().back(), EndsWith(" source=external keyboard."));
  mac.scheduler.advance(std::chrono::seconds{10});
  passesAndRuns(keyDown, keyGrave, fn);
  EXPECT_THAT(logLines().back(), EndsWith("to special function keys."));
}

TEST_F(KeyEventHandlerTest, OnlyADecisionThatNeedsTheKeyboardAsksForIt) {
  constexpr std::uint16_t keyF8 = 100;
  const auto ordinaryKeysAsk = [this] {
    return asksForTheKeyboard(keyDown, keyA) || asksForTheKeyboard(keyUp, keyA) ||
           asksForTheKeyboard(keyDown, keyA, fn) || asksForTheKeyboard(keyDown, keyGrave) ||
           asksForTheKeyboard(flagsChanged, 63, fn);
  };
  EXPECT_FALSE(ordinaryKeysAsk());
  EXPECT_FALSE(asksForTheKeyboard(keyDown, keyF8));
  EXPECT_TRUE(asksForTheKeyboard(keyDown, keyGrave, fn));
  EXPECT_FALSE(asksForTheKeyboard(keyUp, keyGrave, fn));
  EXPECT_TRUE(asksForTheKeyboard(keyDown, keyEscape, fn));
  EXPECT_FALSE(asksForTheKeyboard(keyUp, keyEscape, fn));

  for (const auto* setting : {"enhancedDiagnosticsEnabled", "applyFnModeToExternalFunctionKeys"}) {
    store(setting, true);
    EXPECT_FALSE(ordinaryKeysAsk()) << setting;
    EXPECT_TRUE(asksForTheKeyboard(keyDown, keyF8)) << setting;
    EXPECT_FALSE(asksForTheKeyboard(keyUp, keyF8)) << setting;
    handler->forgetKeys();
    EXPECT_FALSE(asksForTheKeyboard(keyUp, keyF8)) << setting;
    store(setting, false);
  }
}

TEST_F(KeyEventHandlerTest, AChangeOfSettingsTakesEffectWithTheNextKey) {
  EXPECT_TRUE(passesAndRuns(keyDown, 49, fn));
  // As another process would change it.
  store("localToggleShortcutKeyCode", 49);
  EXPECT_FALSE(passesAndRuns(keyDown, 49, fn));
  EXPECT_TRUE(passesAndRuns(keyDown, keyGrave, fn));
  keyrow().settings().resetLocalToggleShortcut();
  EXPECT_TRUE(passesAndRuns(keyDown, 49, fn));
}

TEST_F(KeyEventHandlerTest, EscapeIsNeverThePerAppShortcut) {
  store("localToggleShortcutKeyCode", 53);
  EXPECT_FALSE(passesAndRuns(keyDown, keyEscape, fn));
  EXPECT_EQ(stored("localFnState"), std::nullopt);
  EXPECT_FALSE(passesAndRuns(keyDown, keyGrave, fn));
  EXPECT_NE(stored("localFnState"), std::nullopt);
}

TEST_F(KeyEventHandlerTest, AShortcutInTheTopRowIsNotTranslated) {
  constexpr std::uint16_t keyF8 = 100;
  store("applyFnModeToExternalFunctionKeys", true);
  store("localToggleShortcutKeyCode", int{keyF8});
  EXPECT_TRUE(passesAndRuns(flagsChanged, keyFn, fn));
  EXPECT_FALSE(passesAndRuns(keyDown, keyF8, fn));
  EXPECT_TRUE(mac.systemDefinedEvents.empty());
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
}

struct Side {
  const char* stored;
  std::uint64_t mask;
};
constexpr std::array<Side, 8> sides{{{"leftControl", 0x1},
                                     {"rightControl", 0x2000},
                                     {"leftOption", 0x20},
                                     {"rightOption", 0x40},
                                     {"leftCommand", 0x8},
                                     {"rightCommand", 0x10},
                                     {"leftShift", 0x2},
                                     {"rightShift", 0x4}}};

class ReplacementTest : public KeyEventFixture, public ::testing::WithParamInterface<Side> {};

TEST_P(ReplacementTest, OnlyItsOwnSideStandsInForFn) {
  store("fnReplacementModifier", GetParam().stored);
  for (const auto& [name, mask] : sides) {
    const bool isOwn = mask == GetParam().mask;
    // Whatever left and right have in common is set, too.
    const auto flags = mask | 0x1E0000;
    EXPECT_EQ(passesAndRuns(keyDown, keyGrave, flags), !isOwn) << name;
    EXPECT_EQ(passesAndRuns(keyUp, keyGrave, flags), !isOwn) << name;
    EXPECT_EQ(passesAndRuns(keyDown, keyEscape, flags), !isOwn) << name;
    EXPECT_EQ(passesAndRuns(keyUp, keyEscape, flags), !isOwn) << name;
    EXPECT_TRUE(passesAndRuns(keyDown, keyA, flags)) << name;
  }
  // Once toggled, once cleared.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0));
}

TEST_P(ReplacementTest, FnStillWorks) {
  store("fnReplacementModifier", GetParam().stored);
  EXPECT_FALSE(passesAndRuns(keyDown, keyGrave, fn));
  EXPECT_FALSE(passesAndRuns(keyDown, keyEscape, fn | GetParam().mask));
}

INSTANTIATE_TEST_SUITE_P(AllSides, ReplacementTest, ::testing::ValuesIn(sides),
                         [](const auto& test) { return test.param.stored; });

TEST_F(KeyEventHandlerTest, AnUnknownReplacementStandsInForNothing) {
  for (const auto& value : {PropertyValue{"middleCommand"}, PropertyValue{""}, PropertyValue{5},
                            PropertyValue{"RightCommand"}}) {
    store("fnReplacementModifier", value);
    for (const auto& [name, mask] : sides) EXPECT_TRUE(passesAndRuns(keyDown, keyGrave, mask));
  }
}

}  // namespace
}  // namespace keyrow::sim
