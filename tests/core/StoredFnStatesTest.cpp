#include "core/StoredFnStates.h"

#include "platform/Platform.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StoredFnStatesTest : public CoreTest {
 protected:
  StoredFnStates states{process->platform().userDefaults};

  /// Stores the overrides, and returns how often settings were written until now.
  int storeOverrides(PropertyValue overrides) {
    store("localFnState", std::move(overrides));
    return mac.defaults.writeCount();
  }
};

TEST_F(StoredFnStatesTest, HoldsNothingForAFreshUser) {
  EXPECT_EQ(states.global(), std::nullopt);
  EXPECT_EQ(states.local(textEdit), std::nullopt);
  EXPECT_THAT(states.localBundleIdentifiers(), IsEmpty());
  EXPECT_EQ(mac.defaults.writeCount(), 0);
}

TEST_F(StoredFnStatesTest, StoresTheGlobalModeAsItsRawValue) {
  states.setGlobal(FnState::standard);
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_EQ(states.global(), FnState::standard);
  states.setGlobal(FnState::special);
  EXPECT_EQ(storedSettings(), "{globalFnState=0}");
  EXPECT_EQ(states.global(), FnState::special);
}

TEST_F(StoredFnStatesTest, TakesNothingButAModeForAGlobalMode) {
  auto values = nonModes();
  values.insert(values.end(), {7, 2, -1, 256, std::int64_t{1} << 32});
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    store("globalFnState", value);
    EXPECT_EQ(states.global(), std::nullopt);
    EXPECT_EQ(stored("globalFnState"), value);
  }
  states.setGlobal(FnState::standard);
  EXPECT_EQ(states.global(), FnState::standard);
}

TEST_F(StoredFnStatesTest, ReadsAModeHoweverTheToolHasStoredIt) {
  for (const auto state : {FnState::special, FnState::standard}) {
    for (const auto& value : state == FnState::special ? specialModes() : standardModes()) {
      SCOPED_TRACE(propertyText(value));
      store("globalFnState", value);
      storeOverrides(PropertyDictionary{{textEdit, value}});
      EXPECT_EQ(states.global(), state);
      EXPECT_EQ(states.local(textEdit), state);
    }
  }
}

TEST_F(StoredFnStatesTest, ReadsWhatWasStoredBehindItsBack) {
  states.setGlobal(FnState::special);
  states.setLocal(textEdit, FnState::special);
  store("globalFnState", 1);
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  EXPECT_EQ(states.global(), FnState::standard);
  EXPECT_EQ(states.local(textEdit), FnState::standard);
}

TEST_F(StoredFnStatesTest, ReadsTheOverrideOfTheApplicationThatIsAskedFor) {
  storeOverrides(PropertyDictionary{{textEdit, 1}, {safari, 0}, {"", 1}});
  EXPECT_EQ(states.local(textEdit), FnState::standard);
  EXPECT_EQ(states.local(safari), FnState::special);
  EXPECT_EQ(states.local(""), FnState::standard);
  for (const auto other : {"com.apple.textedit", "com.apple.Text", "com.apple.TextEdit2"}) {
    EXPECT_EQ(states.local(other), std::nullopt) << other;
  }
}

TEST_F(StoredFnStatesTest, TakesNothingButAModeForAnOverride) {
  auto values = nonModes();
  values.insert(values.end(), {5, 2, -1});
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    storeOverrides(PropertyDictionary{{safari, 1}, {textEdit, value}});
    EXPECT_EQ(states.local(textEdit), std::nullopt);
    EXPECT_EQ(states.local(safari), FnState::standard);
  }
}

TEST_F(StoredFnStatesTest, HasNoOverridesWhereAnythingButADictionaryIsStored) {
  for (const auto& value : nonDictionaries()) {
    SCOPED_TRACE(propertyText(value));
    const auto writes = storeOverrides(value);
    EXPECT_EQ(states.local(textEdit), std::nullopt);
    EXPECT_THAT(states.localBundleIdentifiers(), IsEmpty());
    states.removeLocal(textEdit);
    EXPECT_EQ(mac.defaults.writeCount(), writes);
    EXPECT_EQ(stored("localFnState"), value);
  }
}

TEST_F(StoredFnStatesTest, PutsADictionaryInThePlaceOfAnythingElseWhenItSetsAnOverride) {
  for (const auto& value : nonDictionaries()) {
    SCOPED_TRACE(propertyText(value));
    storeOverrides(value);
    states.setLocal(textEdit, FnState::standard);
    EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
  }
}

TEST_F(StoredFnStatesTest, StoresAnOverrideAsItsRawValueInOneWrite) {
  states.setGlobal(FnState::standard);
  const auto writes = mac.defaults.writeCount();
  states.setLocal(textEdit, FnState::special);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  states.setLocal(textEdit, FnState::standard);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=1}}");
  EXPECT_EQ(mac.defaults.writeCount(), writes + 2);
}

TEST_F(StoredFnStatesTest, KeepsEveryOtherEntryAsItIsWhenItSetsOrRemovesAnOverride) {
  PropertyDictionary others{{safari, 0}, {"org.future.app", 5}};
  for (std::size_t index = 0; const auto& value : nonModes()) {
    others.emplace("org.other." + std::to_string(index++), value);
  }
  storeOverrides(others);

  auto withTextEdit = others;
  withTextEdit.emplace(textEdit, 1);
  states.setLocal(textEdit, FnState::standard);
  EXPECT_EQ(stored("localFnState"), PropertyValue{withTextEdit});
  states.removeLocal(textEdit);
  EXPECT_EQ(stored("localFnState"), PropertyValue{others});
}

TEST_F(StoredFnStatesTest, PutsAModeInThePlaceOfAnEntryOfTheSameApplicationThatIsNone) {
  storeOverrides(PropertyDictionary{{textEdit, "standard"}});
  states.setLocal(textEdit, FnState::special);
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=0}}");
}

TEST_F(StoredFnStatesTest, WritesNothingWhenThereIsNoOverrideToRemove) {
  const auto writes = storeOverrides(PropertyDictionary{{textEdit, 1}});
  states.removeLocal(safari);
  states.removeLocals({});
  states.removeLocals({safari, "com.apple.textedit"});
  EXPECT_EQ(mac.defaults.writeCount(), writes);
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
}

TEST_F(StoredFnStatesTest, RemovesSeveralOverridesInOneWrite) {
  const auto writes =
      storeOverrides(PropertyDictionary{{textEdit, 1}, {safari, "x"}, {"org.c", 0}});
  states.removeLocals({textEdit, "org.unknown", safari});
  EXPECT_EQ(mac.defaults.writeCount(), writes + 1);
  EXPECT_EQ(storedSettings(), "{localFnState={org.c=0}}");
}

TEST_F(StoredFnStatesTest, LeavesAnEmptyDictionaryAfterTheLastOverride) {
  storeOverrides(PropertyDictionary{{textEdit, 1}});
  states.removeLocal(textEdit);
  EXPECT_EQ(storedSettings(), "{localFnState={}}");
}

TEST_F(StoredFnStatesTest, NamesEveryApplicationWithAnEntryAlsoWhenItsValueIsNoMode) {
  storeOverrides(PropertyDictionary{{textEdit, 1}, {safari, 5}, {"org.c", "x"}});
  EXPECT_THAT(states.localBundleIdentifiers(), ElementsAre(safari, textEdit, "org.c"));
}

}  // namespace
}  // namespace keyrow::sim
