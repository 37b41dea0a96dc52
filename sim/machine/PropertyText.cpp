#include "sim/machine/PropertyText.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sstream>

namespace keyrow::sim {

std::string quoted(std::string_view text) {
  std::string result{'"'};
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u{%02X}", static_cast<unsigned>(c));
      result += escape.data();
    } else {
      result += c;
    }
  }
  return result + '"';
}

namespace {

/// The shortest of the usual forms that reads back as the same number; never the form
/// of an integer.
std::string numberText(double number) {
  std::string text;
  for (const int precision : {6, 15, std::numeric_limits<double>::max_digits10}) {
    std::ostringstream stream;
    stream.precision(precision);
    stream << number;
    text = stream.str();
    if (std::strtod(text.c_str(), nullptr) == number) break;
  }
  return text.find_first_not_of("-0123456789") == std::string::npos ? text + ".0" : text;
}

}  // namespace

std::string propertyText(const std::optional<PropertyValue>& value) {
  if (!value) return "none";
  if (const auto* boolean = value->boolean()) return *boolean ? "true" : "false";
  if (const auto* integer = value->integer()) return std::to_string(*integer);
  if (const auto* string = value->string()) return quoted(*string);
  if (const auto* number = value->floatingPoint()) {
    return numberText(*number);
  }
  if (value->dictionary()->empty()) return "{}";
  std::string text;
  for (const auto& [key, entry] : *value->dictionary()) {
    if (!text.empty()) text += ' ';
    const bool needsBraces = entry.dictionary() && !entry.dictionary()->empty();
    text += key + (needsBraces ? "={" : "=") + propertyText(entry) + (needsBraces ? "}" : "");
  }
  return text;
}

}  // namespace keyrow::sim
