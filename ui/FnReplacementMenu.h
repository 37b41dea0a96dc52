#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/FnReplacementModifier.h"

namespace keyrow {

/// An item of the pop-up for the Fn replacement modifier.
struct FnReplacementItem {
  std::string_view title;
  /// The stored string; empty for none.
  std::string_view representedObject;
  bool isSeparator = false;
};

/// All items in their order, separators among them.
std::span<const FnReplacementItem> fnReplacementItems();

/// The place of the item for a modifier, or of "Off" for none.
std::size_t fnReplacementItemIndex(std::optional<FnReplacementModifier> modifier);

}  // namespace keyrow
