#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace keyrow {

/// What a keyboard says of its make and model; equal keyboards say the same.
struct KeyboardNumbers {
  /// Device property "VendorID" (`kIOHIDVendorIDKey`).
  std::uint32_t vendorID = 0;
  /// Device property "ProductID" (`kIOHIDProductIDKey`).
  std::uint32_t productID = 0;

  /// Both in hexadecimal, with at least four digits each: "046d:c33f".
  std::string text() const;

  friend auto operator<=>(const KeyboardNumbers&, const KeyboardNumbers&) = default;
};

/// The numbers whose text this is, in letters of either case; absent for all else.
std::optional<KeyboardNumbers> keyboardNumbersFromText(std::string_view text);

}  // namespace keyrow
