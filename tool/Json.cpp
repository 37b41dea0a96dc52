#include "tool/Json.h"

namespace keyrow::tool::json {

namespace {

std::string escaped(unsigned char character) {
  constexpr std::string_view digits = "0123456789abcdef";
  return std::string{"\\u00"} + digits[character >> 4] + digits[character & 0xF];
}

}  // namespace

std::string text(std::string_view value) {
  std::string result{'"'};
  for (const char character : value) {
    const auto byte = static_cast<unsigned char>(character);
    if (character == '"' || character == '\\') {
      result += '\\';
      result += character;
    } else if (byte < 0x20 || byte == 0x7F) {
      result += escaped(byte);
    } else {
      result += character;
    }
  }
  return result + '"';
}

std::string object(const std::vector<std::pair<std::string_view, std::string>>& members) {
  std::string result{'{'};
  for (const auto& [key, value] : members) {
    if (result.size() > 1) result += ',';
    result += text(key) + ':' + value;
  }
  return result + '}';
}

std::string array(const std::vector<std::string>& members) {
  std::string result{'['};
  for (const auto& member : members) {
    if (result.size() > 1) result += ',';
    result += member;
  }
  return result + ']';
}

}  // namespace keyrow::tool::json
