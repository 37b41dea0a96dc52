#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "core/KeyboardDeviceSource.h"
#include "tests/input/KeyboardDeviceSources.h"

namespace keyrow {
namespace {

using enum KeyboardDeviceKind;

TEST(KeyboardDeviceSourceTextTest, SourceDescriptionTellsEveryField) {
  EXPECT_EQ(completeSource().sourceDescription(),
            "kind=external keyboard, builtIn=false, vendorID=1133, transport=USB, "
            "manufacturer=Logitech, product=G Pro, locationID=4245880832, registryID=4294968001");
  EXPECT_EQ(KeyboardDeviceSource{}.sourceDescription(),
            "kind=unknown keyboard, builtIn=nil, vendorID=nil, transport=nil, manufacturer=nil, "
            "product=nil, locationID=nil, registryID=nil");
}

TEST(KeyboardDeviceSourceTextTest, SourceDescriptionSaysNilForJustTheAbsentField) {
  struct Field {
    std::string key;
    std::string value;
    std::function<void(KeyboardDeviceSource&)> makeAbsent;
  };
  const std::vector<Field> fields{
      {", builtIn=", "false", [](auto& source) { source.isBuiltIn.reset(); }},
      {", vendorID=", "1133", [](auto& source) { source.vendorID.reset(); }},
      {", transport=", "USB", [](auto& source) { source.transport.reset(); }},
      {", manufacturer=", "Logitech", [](auto& source) { source.manufacturer.reset(); }},
      {", product=", "G Pro", [](auto& source) { source.product.reset(); }},
      {", locationID=", "4245880832", [](auto& source) { source.locationID.reset(); }},
      {", registryID=", "4294968001", [](auto& source) { source.registryID.reset(); }},
  };
  for (const auto& absent : fields) {
    auto source = completeSource();
    absent.makeAbsent(source);
    std::string expected{"kind=external keyboard"};
    for (const auto& field : fields) {
      expected += field.key + (&field == &absent ? "nil" : field.value);
    }
    EXPECT_EQ(source.sourceDescription(), expected);
  }
}

TEST(KeyboardDeviceSourceTextTest, NoTextTellsTheProductNumber) {
  auto without = completeSource();
  without.productID.reset();
  EXPECT_EQ(without.sourceDescription(), completeSource().sourceDescription());
  EXPECT_EQ(without.logDescription(true), completeSource().logDescription(true));
  EXPECT_EQ(without.inputSourceLabel(true), completeSource().inputSourceLabel(true));
}

TEST(KeyboardDeviceSourceTextTest, SourceDescriptionWritesTheLargestNumbersInDecimal) {
  KeyboardDeviceSource source;
  source.kind = builtIn;
  source.isBuiltIn = true;
  source.registryID = std::numeric_limits<std::uint64_t>::max();
  source.vendorID = source.locationID = std::numeric_limits<std::uint32_t>::max();
  EXPECT_EQ(source.sourceDescription(),
            "kind=built-in keyboard, builtIn=true, vendorID=4294967295, transport=nil, "
            "manufacturer=nil, product=nil, locationID=4294967295, "
            "registryID=18446744073709551615");
}

struct TextCase {
  std::string name;
  KeyboardDeviceSource source;
  std::string withDiagnostics;
  std::string withoutDiagnostics;
};

std::string nameOf(const ::testing::TestParamInfo<TextCase>& info) { return info.param.name; }

class LogDescriptionTest : public ::testing::TestWithParam<TextCase> {};

TEST_P(LogDescriptionTest, NamesManufacturerAndProductOnlyWithEnhancedDiagnostics) {
  const auto& [name, source, withDiagnostics, withoutDiagnostics] = GetParam();
  EXPECT_EQ(source.logDescription(true), withDiagnostics);
  EXPECT_EQ(source.logDescription(false), withoutDiagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, LogDescriptionTest,
    ::testing::ValuesIn(std::vector<TextCase>{
        {"Complete", completeSource(),
         "kind=external keyboard, builtIn=false, transport=USB, manufacturer=Logitech, "
         "product=G Pro",
         "kind=external keyboard, builtIn=false, transport=USB"},
        {"NothingKnown",
         {},
         "kind=unknown keyboard, builtIn=nil, transport=nil, manufacturer=nil, product=nil",
         "kind=unknown keyboard, builtIn=nil, transport=nil"},
        {"BuiltIn",
         makeSource(
             {.kind = builtIn, .isBuiltIn = true, .transport = "SPI", .product = "Keyboard"}),
         "kind=built-in keyboard, builtIn=true, transport=SPI, manufacturer=nil, "
         "product=Keyboard",
         "kind=built-in keyboard, builtIn=true, transport=SPI"},
        {"EmptyTexts",
         makeSource({.kind = unknown, .transport = "", .manufacturer = "", .product = ""}),
         "kind=unknown keyboard, builtIn=nil, transport=, manufacturer=, product=",
         "kind=unknown keyboard, builtIn=nil, transport="},
    }),
    nameOf);

class InputSourceLabelTest : public ::testing::TestWithParam<TextCase> {};

TEST_P(InputSourceLabelTest, NamesTheKeyboardOnlyWithEnhancedDiagnostics) {
  const auto& [name, source, withDiagnostics, withoutDiagnostics] = GetParam();
  EXPECT_EQ(source.inputSourceLabel(true), withDiagnostics);
  EXPECT_EQ(source.inputSourceLabel(false), withoutDiagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, InputSourceLabelTest,
    ::testing::ValuesIn(std::vector<TextCase>{
        {"Complete", completeSource(), "external keyboard (Logitech G Pro), transport=USB",
         "external keyboard"},
        {"ManufacturerWithoutProduct",
         makeSource({.kind = external, .transport = "USB", .manufacturer = "Logitech"}),
         "external keyboard (Logitech), transport=USB", "external keyboard"},
        {"ManufacturerWithEmptyProduct",
         makeSource(
             {.kind = external, .transport = "USB", .manufacturer = "Logitech", .product = ""}),
         "external keyboard (Logitech), transport=USB", "external keyboard"},
        {"ProductWithoutManufacturer",
         makeSource({.kind = builtIn, .transport = "SPI", .product = "G Pro"}),
         "built-in keyboard (G Pro), transport=SPI", "built-in keyboard"},
        {"ProductWithEmptyManufacturer",
         makeSource({.kind = builtIn, .manufacturer = "", .product = "G Pro"}),
         "built-in keyboard (G Pro)", "built-in keyboard"},
        {"TransportAlone", makeSource({.kind = unknown, .transport = "FIFO"}),
         "unknown keyboard, transport=FIFO", "unknown keyboard"},
        {"EmptyTexts",
         makeSource({.kind = unknown, .transport = "", .manufacturer = "", .product = ""}),
         "unknown keyboard", "unknown keyboard"},
        {"NothingKnown", {}, "unknown keyboard", "unknown keyboard"},
    }),
    nameOf);

}  // namespace
}  // namespace keyrow
