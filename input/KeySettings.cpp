#include "input/KeySettings.h"

#include "core/FnReplacementModifier.h"

namespace keyrow {

namespace {

/// How the cache is laid out, from the lowest bit: the key code, the flag of the modifier that
/// stands in for Fn (0 for none), the two Booleans, that it holds anything, the count.
constexpr unsigned modifierShift = 16;
constexpr std::uint64_t modifierMask = 0x3FFF;
constexpr std::uint64_t applyBit = std::uint64_t{1} << 30;
constexpr std::uint64_t diagnosticsBit = std::uint64_t{1} << 31;
constexpr std::uint64_t filledBit = std::uint64_t{1} << 32;
constexpr unsigned countShift = 33;

std::uint64_t pack(const KeySettings::Values& values) {
  return values.localToggleShortcutKeyCode | (values.fnLikeFlags & modifierMask) << modifierShift |
         (values.applyFnModeToExternalFunctionKeys ? applyBit : 0) |
         (values.enhancedDiagnosticsEnabled ? diagnosticsBit : 0) | filledBit;
}

KeySettings::Values unpack(std::uint64_t packed) {
  return {.fnLikeFlags = keyEventFlag::secondaryFn | (packed >> modifierShift & modifierMask),
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
  const auto modifier = use_.settings.fnReplacementModifier();
  const Values values{
      .fnLikeFlags = keyEventFlag::secondaryFn | (modifier ? deviceFlag(*modifier) : 0),
      .localToggleShortcutKeyCode = use_.settings.localToggleShortcutKeyCode(),
      .applyFnModeToExternalFunctionKeys =
          use_.settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys),
      .enhancedDiagnosticsEnabled = use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled)};
  cache_.store(pack(values) | count, std::memory_order_relaxed);
  return values;
}

}  // namespace keyrow
