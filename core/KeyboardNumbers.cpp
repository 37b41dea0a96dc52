#include "core/KeyboardNumbers.h"

#include <cstddef>

namespace keyrow {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::size_t fewestDigits = 4;
constexpr std::size_t mostDigits = 8;

std::string hexText(std::uint32_t number) {
  std::string text;
  for (auto place = mostDigits; place-- > 0;) {
    const auto digit = number >> (4 * place) & 0xF;
    if (digit != 0 || place < fewestDigits || !text.empty()) text += hexDigits[digit];
  }
  return text;
}

std::optional<std::uint32_t> numberFromHex(std::string_view text) {
  const bool hasNeedlessZero = text.size() > fewestDigits && text.front() == '0';
  if (text.size() < fewestDigits || text.size() > mostDigits || hasNeedlessZero) {
    return std::nullopt;
  }
  std::uint32_t number = 0;
  for (const char c : text) {
    const auto digit = hexDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c);
    if (digit == std::string_view::npos) return std::nullopt;
    number = number << 4 | static_cast<std::uint32_t>(digit);
  }
  return number;
}

}  // namespace

std::string KeyboardNumbers::text() const { return hexText(vendorID) + ":" + hexText(productID); }

std::optional<KeyboardNumbers> keyboardNumbersFromText(std::string_view text) {
  const auto colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto vendorID = numberFromHex(text.substr(0, colon));
  const auto productID = numberFromHex(text.substr(colon + 1));
  if (!vendorID || !productID) return std::nullopt;
  return KeyboardNumbers{*vendorID, *productID};
}

}  // namespace keyrow
