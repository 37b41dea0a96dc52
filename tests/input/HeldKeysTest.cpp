#include <gmock/gmock.h>

#include <limits>
#include <set>
#include <vector>

#include "tests/input/KeyEventFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace keyEventType;
constexpr auto fnFlag = keyEventFlag::secondaryFn;
constexpr std::uint16_t heldF5 = 96;
constexpr std::uint16_t heldF8 = 100;
constexpr std::uint16_t heldF12 = 111;

/// How a key's repeats and its release follow its press. Keys of the top row are translated.
class HeldKeysTest : public KeyEventFixture {
 protected:
  void SetUp() override {
    KeyEventFixture::SetUp();
    store("applyFnModeToExternalFunctionKeys", true);
  }

  /// What media keys have done since this was asked the last time: data1 of each event.
  std::vector<std::int64_t> takeMediaKeys() {
    mac.scheduler.runReady();
    std::vector<std::int64_t> taken;
    for (const auto& event : mac.systemDefinedEvents) taken.push_back(event.data1);
    mac.systemDefinedEvents.clear();
    return taken;
  }
};

TEST_F(HeldKeysTest, ARepeatWhosePressWasNotSeenPasses) {
  for (const auto keyCode : {keyA, heldF12, keyEscape, keyGrave}) {
    EXPECT_TRUE(passesRepeat(keyCode, fnFlag)) << keyCode;
  }
  EXPECT_THAT(takeMediaKeys(), IsEmpty());
  EXPECT_THAT(takeWrittenModes(), IsEmpty());
}

TEST_F(HeldKeysTest, AReleaseWhosePressWasNotSeenPasses) {
  EXPECT_TRUE(passes(keyUp, keyA));
  EXPECT_TRUE(passes(keyUp, keyGrave, fnFlag));
  EXPECT_TRUE(passes(keyUp, keyEscape, fnFlag));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_THAT(takeMediaKeys(), IsEmpty());
}

TEST_F(HeldKeysTest, ASwallowedPressTakesOneReleaseAlong) {
  EXPECT_FALSE(passes(keyDown, heldF12));
  EXPECT_FALSE(passesRepeat(heldF12));
  EXPECT_FALSE(passes(keyUp, heldF12));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_THAT(takeMediaKeys(), ElementsAre(0x0A00, 0x0A01, 0x0B00));
  // After that it cannot repeat.
  EXPECT_FALSE(passesRepeat(heldF12));
  EXPECT_THAT(takeMediaKeys(), IsEmpty());
}

TEST_F(HeldKeysTest, APressIsDecidedAnewAndLetsTheMediaKeyUpFirst) {
  EXPECT_FALSE(passes(keyDown, heldF12));
  EXPECT_FALSE(passes(keyDown, heldF12));
  EXPECT_THAT(takeMediaKeys(), ElementsAre(0x0A00, 0x0B00, 0x0A00));
  store("applyFnModeToExternalFunctionKeys", false);
  EXPECT_TRUE(passes(keyDown, heldF12));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_THAT(takeMediaKeys(), ElementsAre(0x0B00));
}

// Of two keyboards that hold a key, any may let it up first.
TEST_F(HeldKeysTest, APressThatPassedComesUpUnderOneThatIsTranslated) {
  store("applyFnModeToExternalFunctionKeys", false);
  EXPECT_TRUE(passes(keyDown, heldF12));
  store("applyFnModeToExternalFunctionKeys", true);
  EXPECT_FALSE(passes(keyDown, heldF12));
  EXPECT_FALSE(passes(keyUp, heldF12));
  EXPECT_FALSE(passesRepeat(heldF12));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_THAT(takeMediaKeys(), ElementsAre(0x0A00, 0x0B00));
}

TEST_F(HeldKeysTest, AShortcutThatIsOverTogglesNoMore) {
  EXPECT_FALSE(passes(keyDown, keyGrave, fnFlag));
  EXPECT_FALSE(passes(keyUp, keyGrave, fnFlag));
  mac.scheduler.runReady();
  takeWrittenModes();
  EXPECT_FALSE(passesRepeat(keyGrave, fnFlag));
  mac.scheduler.runReady();
  EXPECT_THAT(takeWrittenModes(), IsEmpty());
}

TEST_F(HeldKeysTest, WhatIsForgottenComesUp) {
  EXPECT_FALSE(passes(keyDown, heldF12));
  EXPECT_FALSE(passes(keyDown, heldF8));
  EXPECT_FALSE(passes(keyDown, keyGrave, fnFlag));
  takeMediaKeys();
  handler->forgetKeys();
  EXPECT_THAT(takeMediaKeys(), ElementsAre(0x100B00, 0x0B00));
  handler->forgetKeys();
  EXPECT_THAT(takeMediaKeys(), IsEmpty());
  EXPECT_TRUE(passesRepeat(keyGrave, fnFlag));
  EXPECT_TRUE(passes(keyUp, heldF12));
  EXPECT_TRUE(passes(keyUp, keyGrave, fnFlag));
  EXPECT_THAT(takeMediaKeys(), IsEmpty());
}

TEST_F(HeldKeysTest, TheReleaseOfAShortcutIsSwallowedWhateverTheShortcutIsNow) {
  EXPECT_FALSE(passes(keyDown, keyGrave, fnFlag));
  store("localToggleShortcutKeyCode", 49);
  EXPECT_FALSE(passes(keyUp, keyGrave));
  EXPECT_TRUE(passes(keyDown, keyGrave));
  EXPECT_TRUE(passes(keyUp, keyGrave, fnFlag));
}

TEST_F(HeldKeysTest, AnyKeyCodeIsRemembered) {
  constexpr auto largest = std::numeric_limits<std::uint16_t>::max();
  store("localToggleShortcutKeyCode", int{largest});
  EXPECT_FALSE(passes(keyDown, largest, fnFlag));
  EXPECT_FALSE(passes(keyUp, largest));
}

/// F5 always carries the flag of Fn.
class BroughtAlongFnTest : public HeldKeysTest {
 protected:
  void SetUp() override {
    HeldKeysTest::SetUp();
    store("localToggleShortcutKeyCode", int{heldF5});
  }

  bool toggles() {
    const bool isSwallowed = !passes(keyDown, heldF5, fnFlag);
    passes(keyUp, heldF5, fnFlag);
    return isSwallowed;
  }
};

TEST_F(BroughtAlongFnTest, CountsOnlyWhileTheFnKeyIsDown) {
  EXPECT_FALSE(toggles());
  EXPECT_TRUE(passes(flagsChanged, keyFn, fnFlag));
  EXPECT_TRUE(toggles());
  EXPECT_TRUE(toggles());
  EXPECT_TRUE(passes(keyDown, keyA, fnFlag));
  EXPECT_TRUE(toggles());
  EXPECT_TRUE(passes(flagsChanged, keyFn, 0));
  EXPECT_FALSE(toggles());
}

TEST_F(BroughtAlongFnTest, OnlyTheFnKeyItselfSaysThatItIsDown) {
  EXPECT_TRUE(passes(keyDown, keyA, fnFlag));
  EXPECT_FALSE(toggles());
  EXPECT_TRUE(passes(flagsChanged, 56, fnFlag | keyEventFlag::shift));
  EXPECT_FALSE(toggles());
}

// It came up where no tap sees it.
TEST_F(BroughtAlongFnTest, IsForgottenWithTheNextOrdinaryKeyWithoutTheFlag) {
  for (const auto type : {keyDown, keyUp, flagsChanged}) {
    passes(flagsChanged, keyFn, fnFlag);
    EXPECT_TRUE(toggles());
    EXPECT_TRUE(passes(type, keyA, 0));
    EXPECT_FALSE(toggles());
  }
}

TEST_F(BroughtAlongFnTest, IsForgottenWithEverythingElse) {
  passes(flagsChanged, keyFn, fnFlag);
  handler->forgetKeys();
  EXPECT_FALSE(toggles());
}

TEST_F(BroughtAlongFnTest, LeavesTheReplacementItsWork) {
  store("fnReplacementModifier", "rightOption");
  EXPECT_FALSE(passes(keyDown, heldF5, fnFlag | keyEventFlag::option | 0x40));
}

TEST_F(BroughtAlongFnTest, IsNotToldAsFnToTheLog) {
  store("enhancedDiagnosticsEnabled", true);
  passes(keyDown, heldF8, fnFlag);
  EXPECT_THAT(logLines().back(), ::testing::HasSubstr("mode=0 fnPressed=false"));
  passes(flagsChanged, keyFn, fnFlag);
  passes(keyDown, heldF8, fnFlag);
  EXPECT_THAT(logLines().back(), ::testing::HasSubstr("mode=0 fnPressed=true"));
}

TEST_F(BroughtAlongFnTest, IsBroughtByEveryKeyThatDoesAndByNoOther) {
  const std::set<int> bringers{64,  79,  80,  90,  96,  97,  98,  99,  100, 101, 103, 105,
                               106, 107, 109, 111, 113, 114, 115, 116, 117, 118, 119, 120,
                               121, 122, 123, 124, 125, 126, 131, 160, 176, 177, 178};
  store("applyFnModeToExternalFunctionKeys", false);
  for (int keyCode = 0; keyCode < 300; ++keyCode) {
    if (keyCode == keyEscape) continue;
    store("localToggleShortcutKeyCode", keyCode);
    handler->forgetKeys();
    EXPECT_EQ(passes(keyDown, static_cast<std::uint16_t>(keyCode), fnFlag),
              bringers.contains(keyCode))
        << keyCode;
  }
}

}  // namespace
}  // namespace keyrow::sim
