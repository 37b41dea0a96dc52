#pragma once

#include <array>
#include <string_view>

namespace keyrow {

/// Everything in the About pane that never changes: texts, and where each control stands.
/// All lengths in points.
namespace aboutLayout {

inline constexpr std::string_view descriptionText = "The missing Keyrow on macOS";
inline constexpr std::string_view contactTitle = "Contact";
inline constexpr std::string_view reportBugTitle = "Report a Bug";
inline constexpr std::string_view enhancedDiagnosticsTitle = "Include enhanced diagnostics in logs";
inline constexpr std::string_view enhancedDiagnosticsHintText =
    "Adds the app in use and your keyboard model to diagnostic logs.";
inline constexpr std::string_view autoUpdateTitle = "Automatically check for updates";
inline constexpr std::string_view checkUpdatesTitle = "Check for Updates";

inline constexpr double inset = 24;
inline constexpr double iconSize = 64;
/// Of the two labels that wrap.
inline constexpr double labelWidth = 372;
inline constexpr int hintMaximumLines = 2;
inline constexpr double actionsSpacing = 8;

/// What stands in the pane.
enum class Row {
  appIcon,
  description,
  version,
  contactActions,
  enhancedDiagnostics,
  enhancedDiagnosticsHint,
  autoUpdate,
  checkUpdates,
};

/// How a control stands between the pane's edges.
enum class Width {
  /// In the middle.
  centred,
  /// From inset to inset.
  full,
  /// From the leading inset, and at most to the trailing one.
  atMost,
};

struct RowLayout {
  Row row;
  /// From the bottom of the row above, or from the top of the pane.
  double topGap;
  /// Whether the gap may be larger: where spare height goes.
  bool isTopGapMinimum;
  Width width;
};

/// From the top to the bottom.
inline constexpr std::array<RowLayout, 8> rows{{
    {Row::appIcon, 24, false, Width::centred},
    {Row::description, 16, false, Width::full},
    {Row::version, 8, true, Width::full},
    {Row::contactActions, 12, false, Width::atMost},
    {Row::enhancedDiagnostics, 8, false, Width::full},
    {Row::enhancedDiagnosticsHint, 4, false, Width::full},
    {Row::autoUpdate, 8, false, Width::full},
    {Row::checkUpdates, 12, false, Width::atMost},
}};

/// Of the last row, to the pane's bottom.
inline constexpr double bottomGap = 20;

}  // namespace aboutLayout

}  // namespace keyrow
