#include "input/KeySettings.h"

namespace keyrow {

namespace {

/// How the cache is laid out, from the lowest bit: the key code, the modifier (0 for none,
/// else one more than its number), the two Booleans, that it holds anything, the count.
constexpr unsigned modifierShift = 16;
constexpr std::uint64_t modifierMask = 0xF;
constexpr std::uint64_t applyBit = std::uint64_t{1} << 20;
constexpr std::uint64_t diagnosticsBit = std::uint64_t{1} << 21;
constexpr std::uint64_t filledBit = std::uint64_t{1} << 22;
constexpr unsigned countShift = 23;

std::uint64_t pack(const KeySettings::Values& values) {
  const auto modifier = values.fnReplacementModifier
                            ? static_cast<std::uint64_t>(*values.fnReplacementModifier) + 1
                            : 0;
  return values.localToggleShortcutKeyCode | modifier << modifierShift |
         (values.applyFnModeToExternalFunctionKeys ? applyBit : 0) |
         (values.enhancedDiagnosticsEnabled ? diagnosticsBit : 0) | filledBit;
}

KeySettings::Values unpack(std::uint64_t packed) {
  const auto modifier = packed >> modifierShift & modifierMask;
  return {.fnReplacementModifier =
              modifier == 0 ? std::nullopt
                            : std::optional{static_cast<FnReplacementModifier>(modifier - 1)},
          .localToggleShortcutKeyCode = static_cast<std::uint16_t>(packed),
          .applyFnModeToExternalFunctionKeys = (packed & applyBit) != 0,
          .enhancedDiagnosticsEnabled = (packed & diagnosticsBit) != 0};
}

}  // namespace

KeySettings::Values KeySettings::current() {
  // Asked before the values are read: a change in between is seen the next time.
  const auto count = use_.userDefaults.changeCount() << countShift;
  const auto cached = cache_.load(std::memory_order_relaxed);
  if ((cached & filledBit) != 0 && cached >> countShift == count >> countShift) {
    return unpack(cached);
  }
  const Values values{
      .fnReplacementModifier = use_.settings.fnReplacementModifier(),
      .localToggleShortcutKeyCode = use_.settings.localToggleShortcutKeyCode(),
      .applyFnModeToExternalFunctionKeys =
          use_.settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys),
      .enhancedDiagnosticsEnabled = use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled)};
  cache_.store(pack(values) | count, std::memory_order_relaxed);
  return values;
}

}  // namespace keyrow
