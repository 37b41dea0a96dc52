#include "tool/Doctor.h"

#include <gmock/gmock.h>

namespace keyrow::tool {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

/// A Keyrow that runs as process 501 with everything as it should be.
class DoctorTest : public ::testing::Test {
 protected:
  DoctorTest() {
    status.mode = FnState::special;
    status.global = FnState::special;
    status.running = Status::Running{.processIdentifier = 501,
                                     .isTrusted = true,
                                     .inputMonitoring = InputMonitoringAccess::granted,
                                     .hasEventTap = true,
                                     .isSessionActive = true,
                                     .seesKeyboards = true,
                                     .isKeyboardSeized = false,
                                     .keyboards = {}};
  }

  std::vector<std::string> lines() const { return diagnose(status, surroundings, findings); }

  Status status;
  Surroundings surroundings;
  Findings findings{.processes = {501}};
};

TEST_F(DoctorTest, FindsNothingWrong) {
  EXPECT_THAT(lines(), ElementsAre("Nothing is wrong that Keyrow could see."));
}

TEST_F(DoctorTest, TellsATapThatMacOSRefusesFromAMissingPermission) {
  status.running->hasEventTap = false;
  EXPECT_THAT(lines(), ElementsAre(StartsWith("macOS gives Keyrow no keys. ")));
  status.running->isTrusted = false;
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Keyrow lacks the Accessibility permission, ")));
}

TEST_F(DoctorTest, NamesEachMissingPermission) {
  status.running->isTrusted = false;
  status.running->inputMonitoring = InputMonitoringAccess::unknown;
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Keyrow lacks the Accessibility permission, "),
                                   StartsWith("Keyrow lacks the Input Monitoring permission, ")));
}

TEST_F(DoctorTest, SaysThatTheKeyboardCannotBeRead) {
  status.mode.reset();
  EXPECT_THAT(lines(), ElementsAre(StartsWith("The keyboard's mode cannot be read. ")));
}

TEST_F(DoctorTest, ExpectsNothingOfTheKeyboardInAnotherUsersSession) {
  status.running->isSessionActive = false;
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Another user has the keyboard. ")));
}

TEST_F(DoctorTest, KnowsOfSecureInputWithoutAHolder) {
  surroundings.isSecureInputOn = true;
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Some application holds secure input, ")));
}

TEST_F(DoctorTest, OffersToClearAnOverrideUnlessThatIsManaged) {
  status.application = "com.apple.TextEdit";
  status.overrides = {{"com.apple.TextEdit", FnState::special}};
  EXPECT_THAT(lines(), ElementsAre("com.apple.TextEdit has an override: there the mode is special. "
                                   "keyrow override clear com.apple.TextEdit takes it away."));
  findings.managedKeys = {"localFnState"};
  EXPECT_THAT(lines(),
              ElementsAre("localFnState is managed by an administrator: ask them to change it.",
                          "com.apple.TextEdit has an override: there the mode is special."));
}

TEST_F(DoctorTest, OffersNoCommandThatChangesWhatIsManaged) {
  status.running->keyboards = {{.name = "G Pro", .numbers = "046d:c33f", .isTranslatable = true}};
  findings.managedKeys = {"applyFnModeToExternalFunctionKeys"};
  EXPECT_THAT(lines(),
              ElementsAre(StartsWith("applyFnModeToExternalFunctionKeys is managed "),
                          "The top row of keyboards that are not Apple's stays F1 to F12."));
  status.translatesTopRows = true;
  status.keyboardModes.emplace("046d:c33f", FnState::standard);
  findings.managedKeys = {"keyboardFnStates"};
  EXPECT_THAT(lines(), ElementsAre(StartsWith("keyboardFnStates is managed "),
                                   "G Pro (046d:c33f) has a mode of its own: standard."));
}

TEST_F(DoctorTest, KnowsOfAKeyboardThatAnotherProgramHasToItself) {
  status.running->isKeyboardSeized = true;
  EXPECT_THAT(lines(),
              ElementsAre(StartsWith("When Keyrow began to listen, another program had ")));
}

TEST_F(DoctorTest, FindsOthersThatWereLeftBehind) {
  findings.processes = {499, 501};
  EXPECT_THAT(lines(), ElementsAre("Another Keyrow runs, and does nothing any more. Force it to "
                                   "quit: kill -9 499"));
}

TEST_F(DoctorTest, BeginsWithAKeyrowThatDoesNotRunOrAnswer) {
  status.running.reset();
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Keyrow runs, and does not answer. ")));
  findings.processes.clear();
  EXPECT_THAT(lines(), ElementsAre(StartsWith("Keyrow does not run, ")));
}

TEST_F(DoctorTest, SpeaksOfTopRowsOnlyWhereThereAreOnesToTranslate) {
  status.running->keyboards = {
      {.name = "Internal", .numbers = std::nullopt, .isTranslatable = false}};
  EXPECT_THAT(lines(), ElementsAre("Nothing is wrong that Keyrow could see."));
  status.running->keyboards.push_back(
      {.name = "G Pro", .numbers = "046d:c33f", .isTranslatable = true});
  EXPECT_THAT(lines(), ElementsAre(StartsWith("The top row of keyboards that are not Apple's ")));
  status.translatesTopRows = true;
  status.keyboardModes.emplace("046d:c33f", FnState::standard);
  EXPECT_THAT(lines(), ElementsAre("G Pro (046d:c33f) has a mode of its own: standard. keyrow "
                                   "keyboard set 046d:c33f follow lets it follow the others."));
}

}  // namespace
}  // namespace keyrow::tool
