#include "ui/FnReplacementMenu.h"

#include <algorithm>
#include <array>

namespace keyrow {

namespace {

consteval FnReplacementItem itemFor(FnReplacementModifier modifier) {
  return {.title = displayName(modifier), .representedObject = rawValue(modifier)};
}

constexpr FnReplacementItem separator{.title = {}, .representedObject = {}, .isSeparator = true};

/// The keys of the left hand, then those of the right one.
constexpr std::array<FnReplacementItem, 11> items{
    FnReplacementItem{.title = "Off", .representedObject = ""},
    separator,
    itemFor(FnReplacementModifier::leftControl),
    itemFor(FnReplacementModifier::leftOption),
    itemFor(FnReplacementModifier::leftCommand),
    itemFor(FnReplacementModifier::leftShift),
    separator,
    itemFor(FnReplacementModifier::rightControl),
    itemFor(FnReplacementModifier::rightOption),
    itemFor(FnReplacementModifier::rightCommand),
    itemFor(FnReplacementModifier::rightShift),
};

}  // namespace

std::span<const FnReplacementItem> fnReplacementItems() { return items; }

std::size_t fnReplacementItemIndex(std::optional<FnReplacementModifier> modifier) {
  if (!modifier) return 0;
  const auto found =
      std::ranges::find(items, rawValue(*modifier), &FnReplacementItem::representedObject);
  return static_cast<std::size_t>(found - items.begin());
}

}  // namespace keyrow
