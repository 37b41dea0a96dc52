#pragma once

#include <string_view>

/// How some lines of the "state" log begin, for those who write them and for those who look
/// for them.
namespace keyrow::stateLogText {

inline constexpr std::string_view synchronizedGlobal =
    "Synchronized the stored global function key mode ";
inline constexpr std::string_view setGlobal = "Set the global function key mode to ";
inline constexpr std::string_view clearedOverride =
    "Cleared the current app override and restored the global function key mode";
inline constexpr std::string_view cannotRestoreGlobal =
    "Unable to restore the global function key mode before termination because no global state "
    "is stored.";
inline constexpr std::string_view failedToRestoreGlobal =
    "Failed to restore the global function key mode before termination: ";
inline constexpr std::string_view failedToSynchronizePreference =
    "Failed to synchronize the global function key mode to NSUserDefaults.";
inline constexpr std::string_view failedToReadBeforePersisting =
    "Failed to read the current function key mode before persisting defaults: ";

}  // namespace keyrow::stateLogText
