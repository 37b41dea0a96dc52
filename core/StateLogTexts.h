#pragma once

#include <string_view>

/// How some lines of the "state" log begin, for those who write them and for those who look
/// for them.
namespace keyrow::stateLogText {

inline constexpr std::string_view synchronizedGlobal =
    "Synchronized the stored global function key mode ";
inline constexpr std::string_view setGlobal = "Set the global function key mode to ";
inline constexpr std::string_view setOverride =
    "Set a local function key override for the frontmost app to ";
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
inline constexpr std::string_view overrideIsNotGlobal =
    "The keyboard holds an app override's mode, which does not become the global function key "
    "mode.";
inline constexpr std::string_view overrideIsNotPersisted =
    "The keyboard holds an app override's mode, which is not persisted as the global function key "
    "mode.";

}  // namespace keyrow::stateLogText
