#include <ostream>

#include "core/FnStateController.h"
#include "core/FnStatePersistReason.h"
#include "platform/HidSystem.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto synchronizeFailure =
    "state error: Failed to synchronize the global function key mode to NSUserDefaults.";
constexpr auto readFailureBeforePersisting =
    "state error: Failed to read the current function key mode before persisting defaults: "
    "Failed to read the function key mode.";
constexpr auto noStoredMode =
    "state notice: No stored global function key mode was found. Persisted the current hardware "
    "mode instead.";

constexpr std::array allReasons{FnStatePersistReason::instanceTakeover,
                                FnStatePersistReason::applicationTermination,
                                FnStatePersistReason::systemSleep, FnStatePersistReason::quiet};

class FnStatePersistenceTest : public CoreTest {
 protected:
  FnStateController& controller() { return keyrow().fnStateController(); }
};

TEST_F(FnStatePersistenceTest, HasItsReasonsInTheirOrder) {
  for (int value = 0; value < 4; ++value) {
    EXPECT_EQ(static_cast<int>(allReasons[static_cast<std::size_t>(value)]), value);
  }
}

struct Reason {
  FnStatePersistReason reason;
  std::string name;
  std::string text;

  friend std::ostream& operator<<(std::ostream& out, const Reason& row) { return out << row.name; }
};

class LoggedReasonTest : public FnStatePersistenceTest,
                         public ::testing::WithParamInterface<Reason> {
 protected:
  std::string successLine(std::string_view value) const {
    return "state info: Persisted the global function key mode to NSUserDefaults for " +
           GetParam().text + ": standardFunctionKeys=" + std::string{value};
  }
};

INSTANTIATE_TEST_SUITE_P(
    , LoggedReasonTest,
    ::testing::Values(Reason{FnStatePersistReason::instanceTakeover, "InstanceTakeover",
                             "instance takeover"},
                      Reason{FnStatePersistReason::applicationTermination, "ApplicationTermination",
                             "application termination"},
                      Reason{FnStatePersistReason::systemSleep, "SystemSleep", "system sleep"}),
    [](const auto& test) { return test.param.name; });

TEST_P(LoggedReasonTest, WritesABooleanAndLogsTheReason) {
  controller().persistGlobalFnState(FnState::standard, GetParam().reason);
  EXPECT_EQ(preference(), PropertyValue{true});
  controller().persistGlobalFnState(FnState::special, GetParam().reason);
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(), ElementsAre(successLine("true"), successLine("false")));
}

TEST_P(LoggedReasonTest, MirrorsTheStoredModeAndNotThatOfTheHardware) {
  store("globalFnState", 0);
  setHardware(FnState::standard);
  controller().persistStoredGlobalFnState(GetParam().reason);
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(), ElementsAre(successLine("false")));
}

TEST_P(LoggedReasonTest, MirrorsTheModeOfTheHardwareWhenNoneIsStoredAndSaysSo) {
  setHardware(FnState::standard);
  controller().persistStoredGlobalFnState(GetParam().reason);
  EXPECT_EQ(preference(), PropertyValue{true});
  EXPECT_THAT(logLines(), ElementsAre(successLine("true"), noStoredMode));
  EXPECT_EQ(storedSettings(), "{}");
}

TEST_F(FnStatePersistenceTest, PersistsQuietly) {
  controller().persistGlobalFnState(FnState::standard, FnStatePersistReason::quiet);
  EXPECT_EQ(preference(), PropertyValue{true});
  controller().persistGlobalFnState(FnState::special, FnStatePersistReason::quiet);
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(FnStatePersistenceTest, TouchesNeitherTheHardwareNorTheSettings) {
  store("globalFnState", 1);
  for (const auto reason : allReasons) {
    controller().persistGlobalFnState(FnState::standard, reason);
    controller().persistStoredGlobalFnState(reason);
  }
  EXPECT_THAT(writtenValues(), IsEmpty());
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
}

TEST_F(FnStatePersistenceTest, PutsABooleanInThePlaceOfAPreferenceOfAnotherType) {
  setPreference("yes");
  controller().persistGlobalFnState(FnState::special, FnStatePersistReason::quiet);
  EXPECT_EQ(preference(), PropertyValue{false});
}

TEST_F(FnStatePersistenceTest, LogsOnlyTheFailureWhenSynchronisingFailsForAnyReason) {
  std::vector<std::string> expected;
  for (const auto reason : allReasons) {
    mac.faults.fail(PortCall::synchronizePreferences, 1);
    controller().persistGlobalFnState(FnState::standard, reason);
    expected.emplace_back(synchronizeFailure);
  }
  EXPECT_EQ(preference(), std::nullopt);
  EXPECT_EQ(logLines(), expected);
}

TEST_F(FnStatePersistenceTest, MirrorsTheStoredModeWithoutAskingTheHardware) {
  store("globalFnState", 1);
  makeHardwareUnreadable();
  controller().persistStoredGlobalFnState(FnStatePersistReason::quiet);
  EXPECT_EQ(preference(), PropertyValue{true});
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(FnStatePersistenceTest, SaysAlsoQuietlyThatNoModeWasStored) {
  controller().persistStoredGlobalFnState(FnStatePersistReason::quiet);
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(), ElementsAre(noStoredMode));
}

TEST_F(FnStatePersistenceTest, MirrorsTheHardwareWhenWhatIsStoredIsNoMode) {
  setHardware(FnState::standard);
  auto values = nonModes();
  values.insert(values.end(), {7, -1, 2});
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    store("globalFnState", value);
    setPreference(false);
    controller().persistStoredGlobalFnState(FnStatePersistReason::quiet);
    EXPECT_EQ(preference(), PropertyValue{true});
    EXPECT_EQ(stored("globalFnState"), value);
  }
}

TEST_F(FnStatePersistenceTest, SaysThatNoModeWasStoredAlsoWhenSynchronisingFails) {
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  controller().persistStoredGlobalFnState(FnStatePersistReason::systemSleep);
  EXPECT_THAT(logLines(), ElementsAre(synchronizeFailure, noStoredMode));
}

TEST_F(FnStatePersistenceTest, WritesNothingWhenNoModeIsStoredAndTheHardwareCannotBeRead) {
  std::vector<std::string> expected;
  for (const auto call : callsOfARead) {
    for (const auto reason : allReasons) {
      mac.faults.fail(call, 1);
      controller().persistStoredGlobalFnState(reason);
      expected.emplace_back(readFailureBeforePersisting);
    }
  }
  mac.hid.setParameter(hidFKeyModeKey, 2);
  controller().persistStoredGlobalFnState(FnStatePersistReason::applicationTermination);
  expected.emplace_back(readFailureBeforePersisting);

  EXPECT_EQ(mac.globalPreferences.writeCount(), 0);
  EXPECT_EQ(logLines(), expected);
}

TEST_F(FnStatePersistenceTest, KeepsTheOldPreferenceWhenTheHardwareCannotBeRead) {
  setPreference(true);
  makeHardwareUnreadable();
  controller().persistStoredGlobalFnState(FnStatePersistReason::systemSleep);
  EXPECT_EQ(preference(), PropertyValue{true});
  EXPECT_THAT(logLines(), ElementsAre(readFailureBeforePersisting));
}

}  // namespace
}  // namespace keyrow::sim
