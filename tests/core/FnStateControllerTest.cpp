#include "core/FnStateController.h"

#include <optional>
#include <ostream>
#include <thread>
#include <utility>
#include <vector>

#include "platform/HidSystem.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr std::array bothModes{FnState::special, FnState::standard};

class FnStateControllerTest : public CoreTest {
 protected:
  FnStateController& controller() { return keyrow().fnStateController(); }

  /// Notes, at everything that happens from now on, how many services and connections
  /// are held at that moment.
  void watchHandles() {
    mac.timeline.setListener([this](const TimelineEvent&) {
      held.emplace_back(mac.openHandles.count("HidService"),
                        mac.openHandles.count("HidConnection"));
    });
  }
  std::vector<std::pair<int, int>> held;
};

TEST_F(FnStateControllerTest, ReadsTheModeThatTheHardwareHolds) {
  for (const auto state : bothModes) {
    setHardware(state);
    EXPECT_EQ(controller().readFnState(), state);
  }
  EXPECT_THAT(writtenValues(), IsEmpty());
  EXPECT_THAT(logLines(), IsEmpty());
}

struct UnreadableHardware {
  std::string name;
  std::optional<PropertyValue> parameters;

  friend std::ostream& operator<<(std::ostream& out, const UnreadableHardware& hardware) {
    return out << hardware.name;
  }
};

class UnreadableHardwareTest : public FnStateControllerTest,
                               public ::testing::WithParamInterface<UnreadableHardware> {};

TEST_P(UnreadableHardwareTest, FailsInsteadOfAssumingAMode) {
  mac.hid.setParameters(GetParam().parameters);
  EXPECT_EQ(controller().readFnState(), std::unexpected{KeyboardControllerError::readFailed});
  EXPECT_THAT(logLines(), IsEmpty());
}

UnreadableHardware withMode(std::string name, PropertyValue mode) {
  return {std::move(name), PropertyDictionary{{std::string{hidFKeyModeKey}, std::move(mode)}}};
}

INSTANTIATE_TEST_SUITE_P(
    , UnreadableHardwareTest,
    ::testing::Values(UnreadableHardware{"NoParameters", std::nullopt},
                      UnreadableHardware{"ParametersAreAString", "HIDFKeyMode"},
                      UnreadableHardware{"ParametersAreAnInteger", 1},
                      UnreadableHardware{"ParametersAreABoolean", true},
                      UnreadableHardware{"NoModeAmongTheParameters",
                                         PropertyDictionary{{"HIDFKeymode", 1}}},
                      UnreadableHardware{"EmptyParameters", PropertyDictionary{}},
                      withMode("Two", 2), withMode("MinusOne", -1),
                      withMode("OneInTheUpperHalf", std::int64_t{1} << 32), withMode("True", true),
                      withMode("False", false), withMode("FloatingOne", 1.0),
                      withMode("FloatingZero", 0.0), withMode("StringOne", "1"),
                      withMode("EmptyString", ""), withMode("Dictionary", PropertyDictionary{})),
    [](const auto& test) { return test.param.name; });

TEST_F(FnStateControllerTest, FailsToReadWhenAnyCallOfTheReadFails) {
  for (const auto call : callsOfARead) {
    SCOPED_TRACE(info(call).name);
    mac.faults.fail(call, 1);
    EXPECT_EQ(controller().readFnState(), std::unexpected{KeyboardControllerError::readFailed});
    EXPECT_EQ(mac.openHandles.count("HidService"), 0);
    EXPECT_EQ(controller().readFnState(), FnState::special);
  }
}

TEST_F(FnStateControllerTest, SendsTheRawValueOfTheModeAndTouchesNoOtherParameter) {
  mac.hid.setParameter("HIDInitialKeyRepeat", 25);
  ASSERT_TRUE(controller().writeFnState(FnState::standard).has_value());
  EXPECT_EQ(propertyText(mac.hid.parameters()), "HIDFKeyMode=1 HIDInitialKeyRepeat=25");
  ASSERT_TRUE(controller().writeFnState(FnState::special).has_value());
  EXPECT_EQ(propertyText(mac.hid.parameters()), "HIDFKeyMode=0 HIDInitialKeyRepeat=25");
  EXPECT_THAT(writtenValues(), ElementsAre("1", "0"));
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(FnStateControllerTest, WritesAlsoTheModeThatTheHardwareHoldsAlready) {
  ASSERT_TRUE(controller().writeFnState(FnState::special).has_value());
  EXPECT_THAT(writtenValues(), ElementsAre("0"));
}

TEST_F(FnStateControllerTest, WritesWithoutReadingFirst) {
  makeHardwareUnreadable();
  ASSERT_TRUE(controller().writeFnState(FnState::standard).has_value());
  EXPECT_EQ(mac.hid.modeName(), "standard");
}

TEST_F(FnStateControllerTest, LeavesTheHardwareAloneWhenAnyCallOfTheWriteFails) {
  for (const auto call : callsOfAWrite) {
    SCOPED_TRACE(info(call).name);
    mac.faults.fail(call, 1);
    const auto written = controller().writeFnState(FnState::standard);
    ASSERT_FALSE(written.has_value());
    EXPECT_EQ(written.error(), KeyboardControllerError::writeFailed);
    EXPECT_EQ(mac.hid.modeName(), "special");
    EXPECT_EQ(mac.openHandles.count("HidService"), 0);
    EXPECT_EQ(mac.openHandles.count("HidConnection"), 0);
  }
  EXPECT_THAT(writtenValues(), IsEmpty());
  EXPECT_THAT(logLines(), IsEmpty());
  EXPECT_TRUE(controller().writeFnState(FnState::standard).has_value());
}

TEST_F(FnStateControllerTest, HoldsJustTheConnectionWhileItSetsTheParameter) {
  watchHandles();
  ASSERT_TRUE(controller().writeFnState(FnState::standard).has_value());
  mac.faults.fail(PortCall::setHidParameter, 1);
  ASSERT_FALSE(controller().writeFnState(FnState::special).has_value());
  EXPECT_THAT(held, ElementsAre(Pair(0, 1), Pair(0, 1)));
}

TEST_F(FnStateControllerTest, HoldsJustTheServiceWhileItReadsOrOpensIt) {
  watchHandles();
  mac.faults.fail(PortCall::readServiceProperty, 1);
  ASSERT_FALSE(controller().readFnState().has_value());
  mac.faults.fail(PortCall::openConnection, 1);
  ASSERT_FALSE(controller().writeFnState(FnState::special).has_value());
  EXPECT_THAT(held, ElementsAre(Pair(1, 0), Pair(1, 0)));
}

TEST_F(FnStateControllerTest, MayBeCalledFromSeveralThreadsAtOnce) {
  const auto work = [this](FnState state) {
    for (int round = 0; round < 200; ++round) {
      EXPECT_TRUE(controller().writeFnState(state).has_value());
      EXPECT_TRUE(controller().readFnState().has_value());
    }
  };
  std::thread other{work, FnState::special};
  work(FnState::standard);
  other.join();
  EXPECT_EQ(mac.hid.writtenValues().size(), 400U);
}

TEST_F(FnStateControllerTest, TakesTheSystemPreferenceForABooleanWhereItIsOneOrANumber) {
  struct Reading {
    std::optional<PropertyValue> value;
    std::optional<bool> expected;
  };
  const std::vector<Reading> readings{{std::nullopt, std::nullopt},
                                      {true, true},
                                      {false, false},
                                      {1, true},
                                      {0, false},
                                      {2, true},
                                      {-1, true},
                                      {0.5, true},
                                      {0.0, false},
                                      {"true", std::nullopt},
                                      {"1", std::nullopt},
                                      {"", std::nullopt},
                                      {PropertyDictionary{}, std::nullopt}};
  for (const auto& [value, expected] : readings) {
    SCOPED_TRACE(propertyText(value));
    setPreference(value);
    EXPECT_EQ(controller().readSystemFnStatePreference(), expected);
  }
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(FnStateControllerTest, SeesAPreferenceThatChangedBehindItsBackOnlyBySynchronising) {
  setPreference(true);
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  EXPECT_EQ(controller().readSystemFnStatePreference(), std::nullopt);
  EXPECT_EQ(controller().readSystemFnStatePreference(), true);
  setPreference(false);
  EXPECT_EQ(controller().readSystemFnStatePreference(), false);
}

TEST_F(FnStateControllerTest, HasNoPreferenceWhenTheCopyGivesNothing) {
  setPreference(true);
  mac.faults.fail(PortCall::copyPreference, 1);
  EXPECT_EQ(controller().readSystemFnStatePreference(), std::nullopt);
}

TEST_F(FnStateControllerTest, KnowsThePreferenceByItsName) {
  mac.globalPreferences.setValue("NSGlobalDomain", "com.apple.keyboard.fnState", true);
  EXPECT_EQ(controller().readSystemFnStatePreference(), true);
  controller().persistGlobalFnState(FnState::special, FnStatePersistReason::quiet);
  EXPECT_EQ(mac.globalPreferences.domain("NSGlobalDomain"),
            (PropertyDictionary{{"com.apple.keyboard.fnState", false}}));
}

}  // namespace
}  // namespace keyrow::sim
