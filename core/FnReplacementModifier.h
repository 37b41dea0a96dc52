#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace keyrow {

/// A modifier key that stands in for Fn in the shortcuts.
enum class FnReplacementModifier {
  leftControl,
  rightControl,
  leftOption,
  rightOption,
  leftCommand,
  rightCommand,
  leftShift,
  rightShift,
};

/// Every modifier with the string that is stored for it, in the order of the cases.
inline constexpr std::array<std::pair<FnReplacementModifier, std::string_view>, 8>
    fnReplacementModifierTable{{
        {FnReplacementModifier::leftControl, "leftControl"},
        {FnReplacementModifier::rightControl, "rightControl"},
        {FnReplacementModifier::leftOption, "leftOption"},
        {FnReplacementModifier::rightOption, "rightOption"},
        {FnReplacementModifier::leftCommand, "leftCommand"},
        {FnReplacementModifier::rightCommand, "rightCommand"},
        {FnReplacementModifier::leftShift, "leftShift"},
        {FnReplacementModifier::rightShift, "rightShift"},
    }};

constexpr std::string_view rawValue(FnReplacementModifier modifier) {
  return fnReplacementModifierTable[static_cast<std::size_t>(modifier)].second;
}

/// The modifier as the user reads it.
constexpr std::string_view displayName(FnReplacementModifier modifier) {
  constexpr std::array<std::string_view, fnReplacementModifierTable.size()> names{
      "Left Control", "Right Control", "Left Option", "Right Option",
      "Left Command", "Right Command", "Left Shift",  "Right Shift"};
  return names[static_cast<std::size_t>(modifier)];
}

/// The flag that an event carries while this key is held, and not its twin on the other side
/// (`NX_DEVICE…KEYMASK`, IOLLEvent.h).
constexpr std::uint64_t deviceFlag(FnReplacementModifier modifier) {
  constexpr std::array<std::uint64_t, fnReplacementModifierTable.size()> flags{
      0x00000001,  // NX_DEVICELCTLKEYMASK
      0x00002000,  // NX_DEVICERCTLKEYMASK
      0x00000020,  // NX_DEVICELALTKEYMASK
      0x00000040,  // NX_DEVICERALTKEYMASK
      0x00000008,  // NX_DEVICELCMDKEYMASK
      0x00000010,  // NX_DEVICERCMDKEYMASK
      0x00000002,  // NX_DEVICELSHIFTKEYMASK
      0x00000004,  // NX_DEVICERSHIFTKEYMASK
  };
  return flags[static_cast<std::size_t>(modifier)];
}

/// The modifier stored as this string; absent for every other string.
constexpr std::optional<FnReplacementModifier> fnReplacementModifierFromRawValue(
    std::string_view raw) {
  for (const auto& [modifier, text] : fnReplacementModifierTable) {
    if (text == raw) return modifier;
  }
  return std::nullopt;
}

}  // namespace keyrow
