#include "core/KeyboardDeviceSource.h"

#include <algorithm>
#include <array>

#include "core/LogText.h"

namespace keyrow {

namespace {

/// Vendor IDs of Apple: as the Bluetooth SIG and as the USB-IF assigned them.
constexpr std::array<std::uint32_t, 2> appleVendorIDs{0x004C, 0x05AC};

constexpr std::array<std::string_view, 3> builtInTransports{"i2c", "spi", "aid"};
constexpr std::array<std::string_view, 3> externalTransports{"usb", "bluetooth",
                                                             "bluetoothlowenergy"};

bool contains(const auto& range, const auto& value) {
  return std::ranges::find(range, value) != range.end();
}

/// ASCII suffices: every transport that is compared with is ASCII.
std::string asciiLowercased(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

std::string orNil(std::optional<bool> value) {
  if (!value) return "nil";
  return *value ? "true" : "false";
}

template <typename Number>
std::string orNil(std::optional<Number> value) {
  return value ? std::to_string(*value) : "nil";
}

std::string orNil(const std::optional<std::string>& value) {
  return value ? inOneLine(*value) : "nil";
}

}  // namespace

std::string_view kindText(KeyboardDeviceKind kind) {
  constexpr std::array<std::string_view, 3> texts{"built-in keyboard", "external keyboard",
                                                  "unknown keyboard"};
  return texts[static_cast<std::size_t>(kind)];
}

bool isAppleVendor(std::uint32_t vendorID) { return contains(appleVendorIDs, vendorID); }

KeyboardDeviceKind keyboardDeviceKind(std::optional<bool> isBuiltIn,
                                      const std::optional<std::string>& transport) {
  if (isBuiltIn) return *isBuiltIn ? KeyboardDeviceKind::builtIn : KeyboardDeviceKind::external;
  if (!transport) return KeyboardDeviceKind::unknown;
  const auto name = asciiLowercased(*transport);
  if (contains(builtInTransports, name)) return KeyboardDeviceKind::builtIn;
  if (contains(externalTransports, name)) return KeyboardDeviceKind::external;
  return KeyboardDeviceKind::unknown;
}

std::optional<KeyboardNumbers> KeyboardDeviceSource::numbers() const {
  if (!vendorID || !productID) return std::nullopt;
  return KeyboardNumbers{*vendorID, *productID};
}

bool KeyboardDeviceSource::isAppleKeyboard(Text& text) const {
  if (vendorID && isAppleVendor(*vendorID)) return true;
  if (manufacturer && text.localizedCaseInsensitiveContains(*manufacturer, "apple")) return true;
  return product && text.localizedCaseInsensitiveContains(*product, "magic keyboard");
}

bool KeyboardDeviceSource::isMediaTranslationEligible(Text& text) const {
  return isBuiltIn != true && !isAppleKeyboard(text);
}

std::string KeyboardDeviceSource::sourceDescription() const {
  return "kind=" + std::string{kindText(kind)} + ", builtIn=" + orNil(isBuiltIn) +
         ", vendorID=" + orNil(vendorID) + ", transport=" + orNil(transport) +
         ", manufacturer=" + orNil(manufacturer) + ", product=" + orNil(product) +
         ", locationID=" + orNil(locationID) + ", registryID=" + orNil(registryID);
}

std::string KeyboardDeviceSource::logDescription(bool enhancedDiagnostics) const {
  auto text = "kind=" + std::string{kindText(kind)} + ", builtIn=" + orNil(isBuiltIn) +
              ", transport=" + orNil(transport);
  if (enhancedDiagnostics) {
    text += ", manufacturer=" + orNil(manufacturer) + ", product=" + orNil(product);
  }
  return text;
}

std::string KeyboardDeviceSource::inputSourceLabel(bool enhancedDiagnostics) const {
  std::string label{kindText(kind)};
  if (!enhancedDiagnostics) return label;

  auto name = manufacturer.value_or("");
  if (product && !product->empty()) name += (name.empty() ? "" : " ") + *product;
  if (!name.empty()) label += " (" + inOneLine(name) + ")";
  if (transport && !transport->empty()) label += ", transport=" + inOneLine(*transport);
  return label;
}

}  // namespace keyrow
