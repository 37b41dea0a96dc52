#include "tool/Json.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "core/LogText.h"

namespace keyrow::tool::json {

namespace {

std::string escaped(std::uint32_t code) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "\\u%04x", code);
  return text.data();
}

}  // namespace

std::string text(std::string_view value) {
  std::string result{'"'};
  for (const char character : value) {
    if (character == '"' || character == '\\') result += '\\';
    result += character;
  }
  return withControls(result, escaped) + '"';
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
