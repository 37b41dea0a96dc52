#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using SimulatedAlertsTest = SimulatedMacTest;

TEST_F(SimulatedAlertsTest, AnAlertForbidsTerminationUnlessItSaysOtherwise) {
  process->launch();
  auto& alerts = process->platform().alerts;
  alerts.runModal({.messageText = "Of ours",
                   .informativeText = "",
                   .buttons = {"OK"},
                   .preventsTermination = false},
                  [](int /*response*/) {});
  alerts.runModal({.messageText = "Of others", .informativeText = "", .buttons = {"OK"}},
                  [](int /*response*/) {});
  process->quit();
  EXPECT_FALSE(process->hasEnded());
  EXPECT_TRUE(mac.screen.answerAlert("OK"));
  // Nobody asks again by himself.
  EXPECT_FALSE(process->hasEnded());
  process->quit();
  EXPECT_TRUE(process->hasEnded());
}

}  // namespace
}  // namespace keyrow::sim
