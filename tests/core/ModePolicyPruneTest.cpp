#include <chrono>

#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Forgetting the overrides of applications that are gone.
class ModePolicyPruneTest : public ModePolicyTest {
 protected:
  void lookTwice() {
    policy().pruneLocalFnStates();
    mac.scheduler.advance(1min);
    policy().pruneLocalFnStates();
  }
};

TEST_F(ModePolicyPruneTest, LooksTwiceAMinuteApart) {
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  policy().pruneLocalFnStates();
  mac.scheduler.advance(1min - 1ns);
  policy().pruneLocalFnStates();
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
  mac.scheduler.advance(1ns);
  policy().pruneLocalFnStates();
  EXPECT_EQ(storedSettings(), "{localFnState={}}");
}

TEST_F(ModePolicyPruneTest, KeepsTheOverrideOfAnApplicationThatWasOnlyBeingUpdated) {
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  policy().pruneLocalFnStates();
  mac.applications.install(textEdit);
  mac.scheduler.advance(1min);
  policy().pruneLocalFnStates();
  mac.applications.uninstall(textEdit);
  policy().pruneLocalFnStates();
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
  EXPECT_THAT(newLogLines(), IsEmpty());
}

TEST_F(ModePolicyPruneTest, SaysHowManyWentAndWhichOnlyWhenAsked) {
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}});
  lookTwice();
  store("enhancedDiagnosticsEnabled", true);
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  lookTwice();
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Removed the overrides of apps that are not installed any "
                          "more: 2.",
                          "state notice: Removed the overrides of apps that are not installed any "
                          "more: 1 app=com.apple.TextEdit."));
}

TEST_F(ModePolicyPruneTest, ForgetsTheOverridesOfApplicationsThatAreNotInstalled) {
  store("globalFnState", 1);
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}, {"org.gone", 0}});
  mac.applications.install(textEdit);
  beginHere();
  lookTwice();
  // Each of them is told, but both go in one write.
  EXPECT_THAT(happenings, ElementsAre("store localFnState", "store localFnState", "log"));
  EXPECT_EQ(settingsWrites(), 1);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=1}}");
}

TEST_F(ModePolicyPruneTest, WritesNothingWhenEveryApplicationIsInstalled) {
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}});
  mac.applications.install(textEdit);
  mac.applications.install(safari);
  beginHere();
  lookTwice();
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_THAT(happenings, IsEmpty());
}

TEST_F(ModePolicyPruneTest, WritesNothingWhereThereAreNoOverrides) {
  std::vector<std::optional<PropertyValue>> stores{std::nullopt, PropertyDictionary{}};
  for (const auto& value : nonDictionaries()) stores.emplace_back(value);
  for (const auto& value : stores) {
    SCOPED_TRACE(propertyText(value));
    store("localFnState", value);
    beginHere();
    lookTwice();
    EXPECT_EQ(settingsWrites(), 0);
    EXPECT_EQ(stored("localFnState"), value);
  }
}

TEST_F(ModePolicyPruneTest, LeavesAnEmptyDictionaryWhenNoApplicationIsInstalled) {
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}});
  lookTwice();
  EXPECT_EQ(storedSettings(), "{localFnState={}}");
}

TEST_F(ModePolicyPruneTest, JudgesAnEntryByItsApplicationAndNotByItsValue) {
  store("localFnState", PropertyDictionary{{textEdit, "x"}, {safari, 5}, {"org.gone", true}});
  mac.applications.install(textEdit);
  mac.applications.install(safari);
  lookTwice();
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.Safari=5 com.apple.TextEdit=\"x\"}}");
}

TEST_F(ModePolicyPruneTest, AsksForEachApplicationOnItsOwn) {
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}});
  mac.applications.install(textEdit);
  mac.applications.install(safari);
  for (int look = 0; look < 2; ++look) {
    mac.faults.fail(PortCall::findApplication, 1);
    policy().pruneLocalFnStates();
    mac.scheduler.advance(1min);
  }
  // Asked for in the order of their identifiers.
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
}

TEST_F(ModePolicyPruneTest, LeavesTheModeInForceAlone) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  lookTwice();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_TRUE(policy().isLocalScopeActive());
}

}  // namespace
}  // namespace keyrow::sim
