#pragma once

#include <string_view>

/// How some lines of the "app" log begin, for those who write them and for those who look for
/// them.
namespace keyrow::appLogText {

inline constexpr std::string_view instanceDidNotExit =
    "A previous instance did not exit during takeover. Continuing with the current instance.";

}  // namespace keyrow::appLogText
