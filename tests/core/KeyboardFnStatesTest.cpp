#include "core/KeyboardFnStates.h"

#include "platform/Platform.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class KeyboardFnStatesTest : public CoreTest {
 protected:
  static constexpr KeyboardNumbers gPro{0x046D, 0xC33F};
  static constexpr KeyboardNumbers other{0x1234, 1};

  void storeStates(PropertyValue value) { store("keyboardFnStates", std::move(value)); }

  KeyboardFnStates states{process->platform().userDefaults};
};

TEST_F(KeyboardFnStatesTest, HoldsNothingForAFreshUser) {
  EXPECT_THAT(states.all(), IsEmpty());
  EXPECT_EQ(states.of(gPro), std::nullopt);
  states.set(gPro, std::nullopt);
  EXPECT_EQ(mac.defaults.writeCount(), 0);
}

TEST_F(KeyboardFnStatesTest, StoresAModeAsItsRawValueInOneWrite) {
  states.set(gPro, FnState::standard);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={046d:c33f=1}}");
  EXPECT_EQ(states.of(gPro), FnState::standard);
  states.set(other, FnState::special);
  states.set(gPro, FnState::special);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={046d:c33f=0 1234:0001=0}}");
  EXPECT_EQ(states.of(gPro), FnState::special);
  EXPECT_EQ(mac.defaults.writeCount(), 3);
}

TEST_F(KeyboardFnStatesTest, LetsAKeyboardFollowAgain) {
  states.set(gPro, FnState::standard);
  states.set(other, FnState::special);
  states.set(gPro, std::nullopt);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={1234:0001=0}}");
  EXPECT_EQ(states.of(gPro), std::nullopt);
  states.set(gPro, std::nullopt);
  EXPECT_EQ(mac.defaults.writeCount(), 3);
  states.set(other, std::nullopt);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={}}");
}

TEST_F(KeyboardFnStatesTest, ReadsAModeHoweverTheToolHasStoredIt) {
  for (const auto state : {FnState::special, FnState::standard}) {
    for (const auto& value : state == FnState::special ? specialModes() : standardModes()) {
      SCOPED_TRACE(propertyText(value));
      storeStates(PropertyDictionary{{"046d:c33f", value}});
      EXPECT_EQ(states.of(gPro), state);
      EXPECT_THAT(states.all(), ElementsAre(Pair(gPro, state)));
    }
  }
}

TEST_F(KeyboardFnStatesTest, TakesNothingButAModeAndKeepsTheRest) {
  PropertyDictionary odd{{"46d:c33f", 1}, {"", 1}, {"G Pro", 1}, {"046d:c33f:", 1}};
  for (unsigned number = 1; const auto& value : nonModes()) {
    odd.emplace(KeyboardNumbers{1, number++}.text(), value);
  }
  storeStates(odd);
  EXPECT_THAT(states.all(), IsEmpty());
  states.set(gPro, FnState::special);
  EXPECT_THAT(states.all(), ElementsAre(Pair(gPro, FnState::special)));
  states.set(gPro, std::nullopt);
  EXPECT_EQ(stored("keyboardFnStates"), PropertyValue{odd});
}

TEST_F(KeyboardFnStatesTest, PutsAModeInThePlaceOfWhatIsNone) {
  storeStates(PropertyDictionary{{"046d:c33f", "special"}});
  states.set(gPro, FnState::special);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={046d:c33f=0}}");
}

TEST_F(KeyboardFnStatesTest, OfTwoSpellingsTheOneInSmallLettersCounts) {
  storeStates(PropertyDictionary{{"046D:C33F", 1}, {"046d:c33f", 0}, {"046d:C33F", 1}});
  EXPECT_EQ(states.of(gPro), FnState::special);
  storeStates(PropertyDictionary{{"046D:C33F", 1}});
  EXPECT_EQ(states.of(gPro), FnState::standard);
  // Where it is no mode, it is as if it were not there.
  storeStates(PropertyDictionary{{"046D:C33F", 1}, {"046d:c33f", "odd"}});
  EXPECT_EQ(states.of(gPro), FnState::standard);
}

TEST_F(KeyboardFnStatesTest, LeavesOneSpellingBehind) {
  const PropertyDictionary spellings{{"046D:C33F", 1}, {"046d:C33F", "odd"}, {"1234:0001", 0}};
  storeStates(spellings);
  states.set(gPro, FnState::special);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={046d:c33f=0 1234:0001=0}}");
  storeStates(spellings);
  states.set(gPro, std::nullopt);
  EXPECT_EQ(storedSettings(), "{keyboardFnStates={1234:0001=0}}");
}

TEST_F(KeyboardFnStatesTest, HoldsNothingWhereAnythingButADictionaryIsStored) {
  for (const auto& value : nonDictionaries()) {
    SCOPED_TRACE(propertyText(value));
    storeStates(value);
    EXPECT_THAT(states.all(), IsEmpty());
    states.set(gPro, std::nullopt);
    EXPECT_EQ(stored("keyboardFnStates"), value);
    states.set(gPro, FnState::standard);
    EXPECT_EQ(storedSettings(), "{keyboardFnStates={046d:c33f=1}}");
  }
}

TEST_F(KeyboardFnStatesTest, KnowsWhetherAnAdministratorManagesThem) {
  EXPECT_FALSE(states.isManaged());
  mac.defaults.manage(appIdentifier, "keyboardFnStates", PropertyDictionary{{"046d:c33f", 1}});
  EXPECT_TRUE(states.isManaged());
  EXPECT_EQ(states.of(gPro), FnState::standard);
}

}  // namespace
}  // namespace keyrow::sim
