#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "tests/input/KeyEventFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using namespace keyEventType;

struct TopRow {
  std::uint16_t keyCode;
  const char* name;
  std::optional<TranslatedAction> action;
};
const std::vector<TopRow> topRow{
    {122, "F1", AuxiliaryAction{3}},
    {120, "F2", AuxiliaryAction{2}},
    {99, "F3",
     OpenApplicationAction{"/System/Applications/Mission Control.app", "Mission Control"}},
    {118, "F4", KeyStrokeAction{49, 0x100000, "Spotlight Shortcut"}},
    {96, "F5", std::nullopt},
    {97, "F6", std::nullopt},
    {98, "F7", AuxiliaryAction{18}},
    {100, "F8", AuxiliaryAction{16}},
    {101, "F9", AuxiliaryAction{17}},
    {109, "F10", AuxiliaryAction{7}},
    {103, "F11", AuxiliaryAction{1}},
    {111, "F12", AuxiliaryAction{0}}};

class FunctionRowEvaluationTest : public KeyEventFixture {
 protected:
  static constexpr std::uint16_t keyF7 = 98;
  KeyboardDeviceSource external;

  void SetUp() override {
    KeyEventFixture::SetUp();
    store("applyFnModeToExternalFunctionKeys", true);
  }

  std::optional<TranslationEvaluation> evaluate(std::uint16_t keyCode, std::uint32_t type = keyDown,
                                                std::uint64_t flags = 0) {
    return evaluateFrom(&external, keyCode, type, flags);
  }

  std::optional<TranslationEvaluation> evaluateFrom(const KeyboardDeviceSource* source,
                                                    std::uint16_t keyCode,
                                                    std::uint32_t type = keyDown,
                                                    std::uint64_t flags = 0) {
    return keyrow().functionRowMapper().evaluate(
        type, {.timestamp = 0, .flags = flags, .keyCode = keyCode}, source,
        keyrow().keySettings().current());
  }

  /// That the event passes, without an action, for this reason.
  static void expectPass(const std::optional<TranslationEvaluation>& evaluation,
                         const std::string& reason) {
    ASSERT_TRUE(evaluation);
    EXPECT_FALSE(evaluation->shouldTranslate);
    EXPECT_FALSE(evaluation->action);
    EXPECT_EQ(evaluation->reason(), reason);
  }
};

TEST_F(FunctionRowEvaluationTest, KnowsTheTwelveKeysAndTheirActions) {
  for (const auto& key : topRow) {
    const auto evaluation = evaluate(key.keyCode);
    ASSERT_TRUE(evaluation) << key.name;
    EXPECT_EQ(evaluation->functionKeyName, key.name);
    EXPECT_EQ(evaluation->action ? std::optional{*evaluation->action} : std::nullopt, key.action)
        << key.name;
    EXPECT_EQ(evaluation->shouldTranslate, key.action.has_value()) << key.name;
    EXPECT_EQ(evaluation->reason(),
              key.action ? "translate mode=0 fnPressed=false" : "no-public-media-mapping");
  }
}

TEST_F(FunctionRowEvaluationTest, OtherKeysAreNotEvaluated) {
  std::vector<std::uint16_t> evaluated;
  for (std::uint32_t keyCode = 0; keyCode <= 0xFFFF; ++keyCode) {
    if (evaluate(static_cast<std::uint16_t>(keyCode))) {
      evaluated.push_back(static_cast<std::uint16_t>(keyCode));
    }
  }
  EXPECT_THAT(evaluated, ElementsAre(96, 97, 98, 99, 100, 101, 103, 109, 111, 118, 120, 122));
}

TEST_F(FunctionRowEvaluationTest, WithTheSettingOffNothingElseIsAsked) {
  for (const auto& off : {std::optional<PropertyValue>{}, std::optional<PropertyValue>{false}}) {
    store("applyFnModeToExternalFunctionKeys", off);
    mac.trace.start();
    expectPass(evaluate(keyF7), "setting-disabled");
    expectPass(evaluateFrom(nullptr, keyF7, flagsChanged), "setting-disabled");
    EXPECT_THAT(mac.trace.take(), ElementsAre());
  }
}

TEST_F(FunctionRowEvaluationTest, OnlyKeysThatGoDownOrUpAreTranslated) {
  expectPass(evaluate(keyF7, flagsChanged), "unsupported-event-type=12");
  expectPass(evaluateFrom(nullptr, keyF7, 14), "unsupported-event-type=14");
  expectPass(evaluate(keyF7, 0xFFFFFFFE), "unsupported-event-type=4294967294");
}

TEST_F(FunctionRowEvaluationTest, AKeyOfAnUnknownKeyboardPasses) {
  expectPass(evaluateFrom(nullptr, keyF7), "source-unavailable");
  expectPass(evaluateFrom(nullptr, 96), "source-unavailable");
}

TEST_F(FunctionRowEvaluationTest, OnlyWhatTheKeyboardWasFoundToBeCounts) {
  // Asking again what it is would take a translated key's time.
  external.isBuiltIn = true;
  external.vendorID = 0x05AC;
  EXPECT_TRUE(evaluate(keyF7)->shouldTranslate);
  external.mediaTranslationEligible = false;
  expectPass(evaluate(keyF7), "source-not-eligible");
  expectPass(evaluate(96), "source-not-eligible");
}

TEST_F(FunctionRowEvaluationTest, KeysWithoutAMappingDoNotAskTheHardware) {
  mac.trace.start();
  expectPass(evaluate(96), "no-public-media-mapping");
  expectPass(evaluate(97), "no-public-media-mapping");
  EXPECT_THAT(mac.trace.take(), ElementsAre());
}

TEST_F(FunctionRowEvaluationTest, AnUnreadableModeTranslatesNothing) {
  mac.faults.fail(PortCall::readServiceProperty, 1);
  const auto evaluation = evaluate(keyF7);
  EXPECT_FALSE(evaluation->shouldTranslate);
  EXPECT_EQ(evaluation->reason(), "fn-state-unavailable");
  ASSERT_TRUE(evaluation->action);
  EXPECT_EQ(*evaluation->action, TranslatedAction{AuxiliaryAction{18}});
}

TEST_F(FunctionRowEvaluationTest, TheModeDecidesAndFnIsOnlyReported) {
  EXPECT_EQ(evaluate(keyF7, keyUp, keyEventFlag::secondaryFn)->reason(),
            "translate mode=0 fnPressed=true");
  setHardware(FnState::standard);
  const auto evaluation = evaluate(keyF7);
  EXPECT_FALSE(evaluation->shouldTranslate);
  EXPECT_EQ(evaluation->reason(), "passthrough mode=1 fnPressed=false");
  ASSERT_TRUE(evaluation->action);
  EXPECT_EQ(*evaluation->action, TranslatedAction{AuxiliaryAction{18}});
  EXPECT_EQ(evaluate(keyF7, keyDown, keyEventFlag::secondaryFn)->reason(),
            "passthrough mode=1 fnPressed=true");
}

TEST_F(FunctionRowEvaluationTest, AKeyboardWithAModeOfItsOwnNeedsNoHardware) {
  external.vendorID = 0x046D;
  external.productID = 0xC33F;
  for (const auto own : {FnState::special, FnState::standard}) {
    store("keyboardFnStates", PropertyDictionary{{"046d:c33f", rawValue(own)}});
    setHardware(otherFnState(own));
    mac.trace.start();
    const auto evaluation = evaluate(keyF7, keyDown, keyEventFlag::secondaryFn);
    EXPECT_THAT(mac.trace.take(), ElementsAre());
    EXPECT_EQ(evaluation->shouldTranslate, own == FnState::special);
    EXPECT_EQ(evaluation->reason(), own == FnState::special
                                        ? "translate keyboardMode=0 fnPressed=true"
                                        : "passthrough keyboardMode=1 fnPressed=true");
    ASSERT_TRUE(evaluation->action);
    EXPECT_EQ(*evaluation->action, TranslatedAction{AuxiliaryAction{18}});
  }
}

TEST_F(FunctionRowEvaluationTest, AModeOfItsOwnChangesNothingElse) {
  external.vendorID = 0x046D;
  external.productID = 0xC33F;
  store("keyboardFnStates", PropertyDictionary{{"046d:c33f", 0}});
  expectPass(evaluate(96), "no-public-media-mapping");
  expectPass(evaluate(keyF7, flagsChanged), "unsupported-event-type=12");
  external.mediaTranslationEligible = false;
  expectPass(evaluate(keyF7), "source-not-eligible");
  store("applyFnModeToExternalFunctionKeys", false);
  expectPass(evaluate(keyF7), "setting-disabled");
}

TEST(FunctionRowDecisionTest, NeedsNothingButKeySettingsKeyboardAndMode) {
  constexpr std::uint16_t keyF8 = 100;
  const KeySettings::Values settings{.applyFnModeToExternalFunctionKeys = true};
  // Absent where nothing is known; then its top row may be translated.
  const KeyboardDeviceSource foreign;
  const auto decided = [&](const TopRowModes& modes) {
    return *ExternalKeyboardFunctionRowMapper::decide(keyDown, {.keyCode = keyF8}, &foreign,
                                                      settings, modes);
  };
  EXPECT_TRUE(decided({.hardware = FnState::special}).shouldTranslate);
  EXPECT_EQ(decided({.hardware = FnState::standard}).why, TranslationReason::passthrough);
  EXPECT_EQ(decided({}).why, TranslationReason::fnStateUnavailable);
  EXPECT_TRUE(decided({.keyboard = FnState::special}).shouldTranslate);
  EXPECT_EQ(decided({.keyboard = FnState::standard}).why, TranslationReason::passthrough);
}

TEST(FunctionRowDecisionTest, TheKeyboardsOwnModeGoesBeforeTheHardwares) {
  constexpr std::uint16_t keyF8 = 100;
  const KeyboardDeviceSource foreign;
  for (const auto own : {FnState::special, FnState::standard}) {
    const auto decided = *ExternalKeyboardFunctionRowMapper::decide(
        keyDown, {.keyCode = keyF8}, &foreign, {.applyFnModeToExternalFunctionKeys = true},
        {.keyboard = own, .hardware = otherFnState(own)});
    EXPECT_EQ(decided.shouldTranslate, own == FnState::special);
    EXPECT_EQ(decided.reason(), own == FnState::special
                                    ? "translate keyboardMode=0 fnPressed=false"
                                    : "passthrough keyboardMode=1 fnPressed=false");
  }
}

}  // namespace
}  // namespace keyrow::sim
