#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/input/KeyboardDeviceSources.h"
#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

class KeyboardSourceMonitorSourceTest : public KeyboardSourceMonitorFixture {
 protected:
  static constexpr std::uint64_t muchLater = 2 * tick;

  /// The properties of `completeSource`.
  const PropertyDictionary completeProperties{
      {"Built-In", false},          {"VendorID", 1133},   {"Transport", "USB"},
      {"Manufacturer", "Logitech"}, {"Product", "G Pro"}, {"LocationID", std::int64_t{4245880832}},
      {"ProductID", 49983}};
};

TEST_F(KeyboardSourceMonitorSourceTest, ReadsEveryPropertyOfTheKeyboard) {
  EXPECT_EQ(sourceOf(makeKeyboard(4294968001, completeProperties)), completeSource());
}

TEST_F(KeyboardSourceMonitorSourceTest, LeavesPropertiesAbsentThatTheKeyboardLacks) {
  KeyboardDeviceSource expected;
  expected.registryID = 7;
  EXPECT_EQ(sourceOf(makeKeyboard(7, {})), expected);
}

TEST_F(KeyboardSourceMonitorSourceTest, KnowsWhetherTheKeyboardIsEligible) {
  input(makeKeyboard(1, completeProperties), tick);
  input(makeKeyboard(2, {{"Built-In", true}}), 2 * tick);
  input(makeKeyboard(3, {{"Product", "Magic Keyboard"}}), 3 * tick);
  EXPECT_TRUE(sourceAt(tick)->mediaTranslationEligible);
  EXPECT_FALSE(sourceAt(2 * tick)->mediaTranslationEligible);
  EXPECT_FALSE(sourceAt(3 * tick)->mediaTranslationEligible);
}

TEST_F(KeyboardSourceMonitorSourceTest, KeepsTheTransportAsReported) {
  const auto source = sourceOf(makeKeyboard(7, {{"Transport", "BlueTooth"}}));
  ASSERT_TRUE(source);
  EXPECT_EQ(source->transport, "BlueTooth");
  EXPECT_EQ(source->kind, KeyboardDeviceKind::external);
}

TEST_F(KeyboardSourceMonitorSourceTest, AnUnknownTransportWithoutBuiltInIsAnUnknownKeyboard) {
  const auto source = sourceOf(makeKeyboard(7, {{"Transport", "FIFO"}}));
  ASSERT_TRUE(source);
  EXPECT_EQ(source->kind, KeyboardDeviceKind::unknown);
}

TEST_F(KeyboardSourceMonitorSourceTest, ADeviceWithoutRegistryIDStillYieldsASource) {
  auto expected = completeSource();
  expected.registryID.reset();
  EXPECT_EQ(sourceOf(makeKeyboard(std::nullopt, completeProperties)), expected);
}

TEST_F(KeyboardSourceMonitorSourceTest, ARegistryIDThatCannotBeReadIsAbsent) {
  auto expected = completeSource();
  expected.registryID.reset();
  mac.faults.fail(PortCall::registryEntryID, 1);
  EXPECT_EQ(sourceOf(makeKeyboard(4294968001, completeProperties)), expected);
}

TEST_F(KeyboardSourceMonitorSourceTest, RegistryIDZeroIsAnIDLikeAnyOther) {
  const auto named = [](const char* product) {
    return makeKeyboard(0, {{"VendorID", 1133}, {"ProductID", 49983}, {"Product", product}});
  };
  input(named("Old"), tick);
  input(named("New"), muchLater);
  EXPECT_EQ(productAt(muchLater), "Old");
}

TEST_F(KeyboardSourceMonitorSourceTest, PropertiesThatCannotBeReadAreAbsent) {
  KeyboardDeviceSource expected;
  expected.registryID = 7;
  mac.faults.fail(PortCall::readDeviceProperty, Faults::always);
  EXPECT_EQ(sourceOf(makeKeyboard(7, completeProperties)), expected);
}

struct BuiltInCase {
  std::string name;
  PropertyValue property;
  std::optional<bool> isBuiltIn;
};

class BuiltInPropertyTest : public KeyboardSourceMonitorFixture,
                            public ::testing::WithParamInterface<BuiltInCase> {};

TEST_P(BuiltInPropertyTest, IsABooleanOrANumberThatCountsAsOne) {
  KeyboardDeviceSource expected;
  expected.registryID = 7;
  expected.isBuiltIn = GetParam().isBuiltIn;
  expected.mediaTranslationEligible = expected.isBuiltIn != true;
  expected.kind = keyboardDeviceKind(GetParam().isBuiltIn, std::nullopt);
  EXPECT_EQ(sourceOf(makeKeyboard(7, {{"Built-In", GetParam().property}})), expected);
}

INSTANTIATE_TEST_SUITE_P(Values, BuiltInPropertyTest,
                         ::testing::ValuesIn(std::vector<BuiltInCase>{
                             {"True", true, true},
                             {"False", false, false},
                             {"One", 1, true},
                             {"MinusOne", -1, true},
                             {"Zero", 0, false},
                             {"Half", 0.5, true},
                             {"ZeroPointZero", 0.0, false},
                             {"Text", "true", std::nullopt},
                             {"EmptyText", "", std::nullopt},
                             {"Dictionary", PropertyDictionary{}, std::nullopt},
                         }),
                         [](const auto& test) { return test.param.name; });

struct WrongTypeCase {
  std::string name;
  std::string key;
  PropertyValue property;
};

class WrongPropertyTypeTest : public KeyboardSourceMonitorFixture,
                              public ::testing::WithParamInterface<WrongTypeCase> {};

TEST_P(WrongPropertyTypeTest, CountsAsAbsent) {
  KeyboardDeviceSource expected;
  expected.registryID = 7;
  EXPECT_EQ(sourceOf(makeKeyboard(7, {{GetParam().key, GetParam().property}})), expected);
}

INSTANTIATE_TEST_SUITE_P(Properties, WrongPropertyTypeTest,
                         ::testing::ValuesIn(std::vector<WrongTypeCase>{
                             {"VendorIDText", "VendorID", "1452"},
                             {"VendorIDDictionary", "VendorID", PropertyDictionary{}},
                             {"TransportNumber", "Transport", 1},
                             {"TransportBoolean", "Transport", true},
                             {"TransportDictionary", "Transport", PropertyDictionary{{"USB", 1}}},
                             {"ManufacturerNumber", "Manufacturer", 3},
                             {"ManufacturerDictionary", "Manufacturer", PropertyDictionary{}},
                             {"ProductNumber", "Product", 0.5},
                             {"ProductBoolean", "Product", false},
                             {"LocationIDText", "LocationID", "0xFD120000"},
                             {"LocationIDDictionary", "LocationID", PropertyDictionary{}},
                             {"ProductIDText", "ProductID", "0xc33f"},
                             {"ProductIDBoolean", "ProductID", true},
                         }),
                         [](const auto& test) { return test.param.name; });

struct NumberCase {
  std::int64_t property;
  std::uint32_t number;
};

class NumberPropertyTest : public KeyboardSourceMonitorFixture,
                           public ::testing::WithParamInterface<NumberCase> {};

TEST_P(NumberPropertyTest, IsReadAsUnsigned32Bit) {
  const auto [property, number] = GetParam();
  KeyboardDeviceSource expected;
  expected.registryID = 7;
  expected.vendorID = expected.locationID = expected.productID = number;
  constexpr std::uint32_t apple = 1452;
  expected.mediaTranslationEligible = number != apple;
  EXPECT_EQ(sourceOf(makeKeyboard(
                7, {{"VendorID", property}, {"LocationID", property}, {"ProductID", property}})),
            expected);
}

INSTANTIATE_TEST_SUITE_P(Values, NumberPropertyTest,
                         ::testing::ValuesIn(std::vector<NumberCase>{
                             {0, 0},
                             {1452, 1452},
                             {0x7FFFFFFF, 0x7FFFFFFF},
                             {0xFD120000, 0xFD120000},
                             {0xFFFFFFFF, 0xFFFFFFFF},
                             {-1, 0xFFFFFFFF},
                             {-0x80000000LL, 0x80000000},
                             // 0xFD120000, as a registry that knows only signed numbers has it.
                             {-0x02EE0000, 0xFD120000},
                         }));

TEST_F(KeyboardSourceMonitorSourceTest, ReadsThePropertiesOfAKeyboardOnce) {
  const auto keyboard = makeKeyboard(4294968001, completeProperties);
  input(keyboard, tick);
  mac.faults.fail(PortCall::readDeviceProperty, Faults::always);
  const auto callsBefore = mac.faults.overallCallCount();
  input(keyboard, muchLater);
  // Only the registry ID is asked for.
  EXPECT_EQ(mac.faults.overallCallCount() - callsBefore, 1U);
  EXPECT_EQ(sourceAt(muchLater), completeSource());
}

TEST_F(KeyboardSourceMonitorSourceTest, AKeyboardThatDidNotTellItsNumbersIsAskedAgain) {
  const auto keyboard = makeKeyboard(4294968001, completeProperties);
  // The vendor is asked for second, the product last.
  for (const std::uint64_t before : {1U, 6U}) {
    monitor().stopMonitoring();
    monitor().startMonitoring();
    mac.faults.fail(PortCall::readDeviceProperty, 1, before);
    input(keyboard, tick);
    EXPECT_NE(sourceAt(tick), completeSource());
    input(keyboard, muchLater);
    EXPECT_EQ(sourceAt(muchLater), completeSource());
  }
}

TEST_F(KeyboardSourceMonitorSourceTest, TellsKeyboardsApartByTheirRegistryID) {
  input(makeKeyboard(1, {{"Product", "A"}}), tick);
  input(makeKeyboard(2, {{"Product", "B"}}), muchLater);
  EXPECT_EQ(productAt(tick), "A");
  EXPECT_EQ(productAt(muchLater), "B");
}

TEST_F(KeyboardSourceMonitorSourceTest, AKeyboardThatCameBackUnderANewIDIsReadAnew) {
  input(makeKeyboard(1, {{"Product", "Before"}}), tick);
  input(makeKeyboard(2, {{"Product", "After"}}), muchLater);
  EXPECT_EQ(productAt(muchLater), "After");
}

TEST_F(KeyboardSourceMonitorSourceTest, ADeviceWithoutRegistryIDIsReadAtEveryInput) {
  input(makeKeyboard(std::nullopt, {{"Product", "Old"}}), tick);
  input(makeKeyboard(std::nullopt, {{"Product", "New"}}), muchLater);
  EXPECT_EQ(productAt(tick), "Old");
  EXPECT_EQ(productAt(muchLater), "New");
}

TEST_F(KeyboardSourceMonitorSourceTest, ChangingTheDiagnosticsKeepsWhatWasSampled) {
  input(namedKeyboard("A"), tick);
  keyrow().settings().set(BooleanSetting::enhancedDiagnosticsEnabled, true);
  EXPECT_EQ(productAt(tick), "A");
}

}  // namespace
}  // namespace keyrow::sim
