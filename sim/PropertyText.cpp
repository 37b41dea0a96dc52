#include "sim/PropertyText.h"

#include <sstream>

namespace keyrow::sim {

std::string quoted(std::string_view text) {
  std::string result{'"'};
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (c == '\n') {
      result += "\\n";
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string propertyText(const std::optional<PropertyValue>& value) {
  if (!value) return "none";
  if (const auto* boolean = value->boolean()) return *boolean ? "true" : "false";
  if (const auto* integer = value->integer()) return std::to_string(*integer);
  if (const auto* string = value->string()) return quoted(*string);
  if (const auto* number = value->floatingPoint()) {
    std::ostringstream text;
    text << std::showpoint << *number;
    return text.str();
  }
  std::string text{"{"};
  for (const auto& [key, entry] : *value->dictionary()) {
    if (text.size() > 1) text += ' ';
    text += key + "=" + propertyText(entry);
  }
  return text + "}";
}

}  // namespace keyrow::sim
