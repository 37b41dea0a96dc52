#include "app/AppDelegate.h"

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using AppDelegateTest = SimulatedMacTest;

TEST_F(AppDelegateTest, AppliesTheOverrideOfTheFrontmostAppAtLaunch) {
  mac.applications.install("com.apple.TextEdit");
  mac.applications.activate("com.apple.TextEdit");
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{"com.apple.TextEdit", 1}});
  process->launch();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
}

}  // namespace
}  // namespace keyrow::sim
