#pragma once

#include <string_view>

/// How some lines of the "input" log begin, for those who write them and for those who look
/// for them.
namespace keyrow::inputLogText {

inline constexpr std::string_view failedToCreateTap = "Failed to create the keyboard event tap.";
inline constexpr std::string_view failedToRecoverTap =
    "Failed to recover the keyboard event tap after ";

}  // namespace keyrow::inputLogText
