#pragma once

#include <string_view>

/// How some lines of the "input" log begin, for those who write them and for those who look
/// for them.
namespace keyrow::inputLogText {

inline constexpr std::string_view failedToCreateTap = "Failed to create the keyboard event tap.";
inline constexpr std::string_view failedToRecoverTap =
    "Failed to recover the keyboard event tap after ";

inline constexpr std::string_view createdTapAfterFailure =
    "Created the keyboard event tap after all.";
inline constexpr std::string_view lostTrust =
    "The Accessibility permission was taken away, and the keyboard event tap is stopped.";
inline constexpr std::string_view regainedTrust =
    "The Accessibility permission was granted, and the keyboard event tap is started.";
inline constexpr std::string_view stoppedTapAfterTimeouts =
    "Stopped the keyboard event tap after repeated timeouts. A new one comes in ";
inline constexpr std::string_view createdTapAfterRest =
    "Created a new keyboard event tap after the rest.";

}  // namespace keyrow::inputLogText
