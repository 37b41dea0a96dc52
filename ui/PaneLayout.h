#pragma once

#include <string_view>
#include <variant>
#include <vector>

#include "ui/Checkbox.h"
#include "ui/SettingsWindowView.h"

namespace keyrow {

/// A label in small letters, below what it explains, that always says the same.
struct Hint {
  std::string_view text;
};

/// How something stands between the pane's edges.
enum class Width {
  /// From inset to inset.
  full,
  /// From the leading inset, and at most to the trailing one.
  atMost,
  /// From the leading inset; the controls beside it see to the rest.
  leading,
  /// In the middle.
  centred,
};

/// Where a row stands; in points.
struct RowPlace {
  /// From the bottom of the row above, or from the top of the pane.
  double topGap;
  Width width;
  /// Whether the gap may be larger: where spare height goes.
  bool isTopGapMinimum = false;
};

/// A row of a pane. `Control` is the pane's list of what is neither a check box nor a hint.
template <typename Control>
struct PaneRow {
  /// What it begins with.
  std::variant<Control, Checkbox, Hint> what;
  RowPlace place;
};

/// The check boxes among the rows of a pane, from the top.
std::vector<Checkbox> checkboxesOf(const auto& rows) {
  std::vector<Checkbox> checkboxes;
  for (const auto& row : rows) {
    if (const auto* checkbox = std::get_if<Checkbox>(&row.what)) checkboxes.push_back(*checkbox);
  }
  return checkboxes;
}

/// At the leading and the trailing edge of each pane.
inline constexpr double paneInset = 24;
/// Of labels that wrap.
inline constexpr double paneTextWidth = leastSettingsContentSize.width - 2 * paneInset;

}  // namespace keyrow
