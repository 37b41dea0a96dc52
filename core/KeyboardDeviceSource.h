#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/KeyboardNumbers.h"
#include "platform/Text.h"

namespace keyrow {

/// Where a keyboard sits.
enum class KeyboardDeviceKind { builtIn, external, unknown };

/// "built-in keyboard", "external keyboard" or "unknown keyboard".
std::string_view kindText(KeyboardDeviceKind kind);

/// Whether this vendor ID is Apple's.
bool isAppleVendor(std::uint32_t vendorID);

/// The kind that the device properties "Built-In" and "Transport" tell.
KeyboardDeviceKind keyboardDeviceKind(std::optional<bool> isBuiltIn,
                                      const std::optional<std::string>& transport);

/// Which keyboard produced an input, by its device properties as it reports them. A
/// property that the device lacks, or that has an unexpected type, is absent.
struct KeyboardDeviceSource {
  /// Registry entry ID of the device's service.
  std::optional<std::uint64_t> registryID;
  KeyboardDeviceKind kind = KeyboardDeviceKind::unknown;
  std::optional<bool> isBuiltIn;
  std::optional<std::uint32_t> vendorID;
  std::optional<std::string> transport;
  std::optional<std::string> manufacturer;
  std::optional<std::string> product;
  std::optional<std::uint32_t> locationID;
  /// What `isMediaTranslationEligible` answered when the properties were read.
  bool mediaTranslationEligible = true;
  std::optional<std::uint32_t> productID;

  /// Its make and model; absent when it lacks either number.
  std::optional<KeyboardNumbers> numbers() const;

  /// Whether this is one of Apple's keyboards, by vendor, manufacturer or product.
  bool isAppleKeyboard(Text& text) const;

  /// Whether its top row may be translated: not built in, and not Apple's.
  bool isMediaTranslationEligible(Text& text) const;

  /// What tells one keyboard from another, in one line.
  std::string sourceDescription() const;

  /// The keyboard as the log introduces it; names manufacturer and product only with
  /// enhanced diagnostics on.
  std::string logDescription(bool enhancedDiagnostics) const;

  /// The keyboard as the log names it beside a command that it issued; names
  /// manufacturer, product and transport only with enhanced diagnostics on.
  std::string inputSourceLabel(bool enhancedDiagnostics) const;

  friend bool operator==(const KeyboardDeviceSource&, const KeyboardDeviceSource&) = default;
};

}  // namespace keyrow
