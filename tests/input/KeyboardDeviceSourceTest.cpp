#include "core/KeyboardDeviceSource.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "sim/ports/SimulatedText.h"
#include "tests/input/KeyboardDeviceSources.h"

namespace keyrow {
namespace {

using enum KeyboardDeviceKind;

struct KindCase {
  std::optional<bool> isBuiltIn;
  std::optional<std::string> transport;
  KeyboardDeviceKind kind;
};

class KeyboardDeviceKindTest : public ::testing::TestWithParam<KindCase> {};

TEST_P(KeyboardDeviceKindTest, FollowsFromBuiltInAndElseFromTransport) {
  const auto& [isBuiltIn, transport, kind] = GetParam();
  EXPECT_EQ(keyboardDeviceKind(isBuiltIn, transport), kind) << transport.value_or("no transport");
}

INSTANTIATE_TEST_SUITE_P(BuiltInDecidesWhateverTheTransport, KeyboardDeviceKindTest,
                         ::testing::ValuesIn(std::vector<KindCase>{
                             {true, std::nullopt, builtIn},
                             {true, "USB", builtIn},
                             {true, "FIFO", builtIn},
                             {false, std::nullopt, external},
                             {false, "SPI", external},
                             {false, "FIFO", external},
                         }));

INSTANTIATE_TEST_SUITE_P(TransportCountsInAnyLetterCase, KeyboardDeviceKindTest,
                         ::testing::ValuesIn(std::vector<KindCase>{
                             {std::nullopt, "i2c", builtIn},
                             {std::nullopt, "I2C", builtIn},
                             {std::nullopt, "spi", builtIn},
                             {std::nullopt, "Spi", builtIn},
                             {std::nullopt, "aid", builtIn},
                             {std::nullopt, "AID", builtIn},
                             {std::nullopt, "usb", external},
                             {std::nullopt, "USB", external},
                             {std::nullopt, "bluetooth", external},
                             {std::nullopt, "Bluetooth", external},
                             {std::nullopt, "BLUETOOTH", external},
                             {std::nullopt, "bLuEtOoTh", external},
                             {std::nullopt, "BluetoothLowEnergy", external},
                             {std::nullopt, "BLUETOOTHLOWENERGY", external},
                         }));

INSTANTIATE_TEST_SUITE_P(AnyOtherTransportIsUnknown, KeyboardDeviceKindTest,
                         ::testing::ValuesIn(std::vector<KindCase>{
                             {std::nullopt, std::nullopt, unknown},
                             {std::nullopt, "FIFO", unknown},
                             {std::nullopt, "", unknown},
                             {std::nullopt, " usb", unknown},
                             {std::nullopt, "usb ", unknown},
                             {std::nullopt, "usb3", unknown},
                             {std::nullopt, "sp", unknown},
                             {std::nullopt, "Bluetooth Low Energy", unknown},
                         }));

TEST(KeyboardDeviceSourceTest, EveryKindHasItsText) {
  EXPECT_EQ(kindText(builtIn), "built-in keyboard");
  EXPECT_EQ(kindText(external), "external keyboard");
  EXPECT_EQ(kindText(unknown), "unknown keyboard");
}

struct AppleCase {
  std::optional<std::uint32_t> vendorID;
  std::optional<std::string> manufacturer;
  std::optional<std::string> product;
  bool isApple;
};

class AppleKeyboardTest : public ::testing::TestWithParam<AppleCase> {};

TEST_P(AppleKeyboardTest, IsRecognisedByVendorManufacturerOrProduct) {
  const auto& [vendorID, manufacturer, product, isApple] = GetParam();
  KeyboardDeviceSource source;
  source.vendorID = vendorID;
  source.manufacturer = manufacturer;
  source.product = product;
  sim::SimulatedText text;
  EXPECT_EQ(source.isAppleKeyboard(text), isApple)
      << vendorID.value_or(0) << ' ' << manufacturer.value_or("-") << ' ' << product.value_or("-");
}

INSTANTIATE_TEST_SUITE_P(Vendor, AppleKeyboardTest,
                         ::testing::ValuesIn(std::vector<AppleCase>{
                             {0x004C, {}, {}, true},
                             {0x05AC, {}, {}, true},
                             {0x05AC, "Logitech", "G Pro", true},
                             {std::nullopt, {}, {}, false},
                             {0, {}, {}, false},
                             {0x004B, {}, {}, false},
                             {0x004D, {}, {}, false},
                             {0x05AB, {}, {}, false},
                             {0x05AD, {}, {}, false},
                             {0x1004C, {}, {}, false},
                             {0x105AC, {}, {}, false},
                         }));

INSTANTIATE_TEST_SUITE_P(Manufacturer, AppleKeyboardTest,
                         ::testing::ValuesIn(std::vector<AppleCase>{
                             {0x046D, "Apple", {}, true},
                             {0x046D, "Apple Inc.", {}, true},
                             {0x046D, "APPLE INC.", {}, true},
                             {0x046D, "made by apple", {}, true},
                             {0x046D, "Pineapple Ltd", {}, true},
                             {0x046D, "", {}, false},
                             {0x046D, "App le", {}, false},
                             {0x046D, "Appl", {}, false},
                             {0x046D, "Magic Keyboard", {}, false},
                         }));

INSTANTIATE_TEST_SUITE_P(Product, AppleKeyboardTest,
                         ::testing::ValuesIn(std::vector<AppleCase>{
                             {0x046D, {}, "Magic Keyboard", true},
                             {0x046D, {}, "magic keyboard", true},
                             {0x046D, {}, "MAGIC KEYBOARD WITH TOUCH ID", true},
                             {0x046D, {}, "Dana's mAgIc kEyBoArD", true},
                             {0x046D, {}, "", false},
                             {0x046D, {}, "Magic", false},
                             {0x046D, {}, "Magic  Keyboard", false},
                             {0x046D, {}, "MagicKeyboard", false},
                             {0x046D, {}, "Apple Keyboard", false},
                         }));

struct EligibilityCase {
  std::string name;
  KeyboardDeviceSource source;
  bool isEligible;
};

class EligibilityTest : public ::testing::TestWithParam<EligibilityCase> {};

TEST_P(EligibilityTest, ExcludesBuiltInAndAppleKeyboardsOnly) {
  sim::SimulatedText text;
  EXPECT_EQ(GetParam().source.isMediaTranslationEligible(text), GetParam().isEligible);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, EligibilityTest,
    ::testing::ValuesIn(std::vector<EligibilityCase>{
        {"OtherVendorOverUsbIs",
         makeSource({.kind = external, .isBuiltIn = false, .vendorID = 0x046D, .transport = "USB"}),
         true},
        {"NothingKnownIs", {}, true},
        {"BuiltInIsNot", makeSource({.kind = builtIn, .isBuiltIn = true, .vendorID = 0x046D}),
         false},
        {"SpiWithoutBuiltInIs",
         makeSource({.kind = builtIn, .vendorID = 0x046D, .transport = "SPI"}), true},
        {"AppleOverSpiWithoutBuiltInIsNot",
         makeSource({.kind = builtIn, .vendorID = 0x05AC, .transport = "SPI"}), false},
        {"AppleVendorOverBluetoothIsNot",
         makeSource(
             {.kind = external, .isBuiltIn = false, .vendorID = 0x004C, .transport = "Bluetooth"}),
         false},
        {"ManufacturerInCapitalsIsNot",
         makeSource({.kind = external,
                     .isBuiltIn = false,
                     .vendorID = 0x046D,
                     .manufacturer = "APPLE INC."}),
         false},
        {"MagicKeyboardInAnyCaseIsNot",
         makeSource({.kind = external,
                     .isBuiltIn = false,
                     .vendorID = 0x046D,
                     .product = "MAGIC keyboard"}),
         false},
    }),
    [](const auto& test) { return test.param.name; });

using Change = std::function<void(KeyboardDeviceSource&)>;

/// Makes each field absent, one field per entry.
const std::array<std::pair<std::string, Change>, 8> absentFields{{
    {"registryID", [](auto& source) { source.registryID.reset(); }},
    {"isBuiltIn", [](auto& source) { source.isBuiltIn.reset(); }},
    {"vendorID", [](auto& source) { source.vendorID.reset(); }},
    {"transport", [](auto& source) { source.transport.reset(); }},
    {"manufacturer", [](auto& source) { source.manufacturer.reset(); }},
    {"product", [](auto& source) { source.product.reset(); }},
    {"locationID", [](auto& source) { source.locationID.reset(); }},
    {"productID", [](auto& source) { source.productID.reset(); }},
}};

TEST(KeyboardDeviceSourceTest, EqualityComparesEveryField) {
  const std::array<std::pair<std::string, Change>, 9> otherValues{{
      {"registryID", [](auto& source) { source.registryID = 4294968002; }},
      {"kind", [](auto& source) { source.kind = unknown; }},
      {"isBuiltIn", [](auto& source) { source.isBuiltIn = true; }},
      {"vendorID", [](auto& source) { source.vendorID = 1134; }},
      {"transport", [](auto& source) { source.transport = "usb"; }},
      {"manufacturer", [](auto& source) { source.manufacturer = "logitech"; }},
      {"product", [](auto& source) { source.product = "G Pro "; }},
      {"locationID", [](auto& source) { source.locationID = 0; }},
      {"productID", [](auto& source) { source.productID = 49984; }},
  }};
  EXPECT_EQ(completeSource(), completeSource());
  for (const auto& [field, change] : otherValues) {
    auto changed = completeSource();
    change(changed);
    EXPECT_NE(changed, completeSource()) << field;
  }
}

TEST(KeyboardDeviceSourceTest, AnAbsentFieldEqualsOnlyAnAbsentOne) {
  KeyboardDeviceSource empty;
  empty.registryID = 0;
  empty.isBuiltIn = false;
  empty.vendorID = 0;
  empty.transport = empty.manufacturer = empty.product = "";
  empty.locationID = empty.productID = 0;
  for (const auto& [field, makeAbsent] : absentFields) {
    auto absent = empty;
    makeAbsent(absent);
    EXPECT_NE(absent, empty) << field;
    auto alsoAbsent = empty;
    makeAbsent(alsoAbsent);
    EXPECT_EQ(absent, alsoAbsent) << field;
  }
}

TEST(KeyboardDeviceSourceTest, HasNumbersWhereItHasBoth) {
  EXPECT_EQ(completeSource().numbers(), (KeyboardNumbers{0x046D, 0xC33F}));
  EXPECT_EQ(makeSource({.vendorID = 0, .productID = 0}).numbers(), (KeyboardNumbers{0, 0}));
  EXPECT_EQ(makeSource({.vendorID = 0x046D}).numbers(), std::nullopt);
  EXPECT_EQ(makeSource({.productID = 0xC33F}).numbers(), std::nullopt);
}

}  // namespace
}  // namespace keyrow
