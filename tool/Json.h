#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keyrow::tool {

/// JSON texts (RFC 8259) of values, made from the inside out.
namespace json {

/// A text.
std::string text(std::string_view value);
inline std::string flag(bool value) { return value ? "true" : "false"; }
inline std::string number(std::int64_t value) { return std::to_string(value); }
inline std::string nothing() { return "null"; }

/// Members are texts of values already.
std::string object(const std::vector<std::pair<std::string_view, std::string>>& members);
std::string array(const std::vector<std::string>& members);

}  // namespace json

}  // namespace keyrow::tool
