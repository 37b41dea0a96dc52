#pragma once

#include <array>
#include <string_view>

namespace keyrow {

/// Everything in the General pane that never changes: texts, and where each control stands.
/// All lengths in points.
namespace generalLayout {

inline constexpr std::string_view permissionButtonTitle = "Accessibility Permission";
/// A help button (`NSBezelStyleHelpButton`) draws it by itself.
inline constexpr std::string_view permissionHelpTitle = "?";
inline constexpr std::string_view permissionHintText =
    "Keyrow needs both Accessibility and Input Monitoring for keyboard monitoring, global "
    "shortcuts, and external keyboard support.";
inline constexpr std::string_view loginItemTitle = "Launch at login";
inline constexpr std::string_view capsLockIndicatorTitle = "Show Caps Lock indicator";
inline constexpr std::string_view externalFunctionKeysTitle =
    "Apply Fn function to non-Apple vendor external F keys";
inline constexpr std::string_view externalFunctionKeysHintText =
    "When enabled, supported top-row F keys on non-Apple external keyboards follow the current Fn "
    "function.";
inline constexpr std::string_view localShortcutTitle = "Frontmost App Override Shortcut";
inline constexpr std::string_view resetTitle = "Reset";
inline constexpr std::string_view localShortcutHintText =
    "Use Fn plus this key to create or toggle an app-specific Fn override for the frontmost app, "
    "using a different Fn mode from the global setting.";
inline constexpr std::string_view fnReplacementTitle = "Fn replacement modifier";
inline constexpr std::string_view fnReplacementHintText =
    "Optional. Choose a modifier key to mirror Fn for Esc and the current app shortcut.";
inline constexpr std::string_view quitTitle = "Quit";
inline constexpr std::string_view popoverText =
    "Keyrow needs both Accessibility and Input Monitoring to detect Fn-related keyboard events, "
    "global shortcuts, and external keyboard input. If either permission does not take effect, "
    "remove Keyrow from that pane in Settings and add it again.";

inline constexpr double inset = 24;
/// Of the hint labels: the pane's width less both insets.
inline constexpr double hintWidth = 372;
inline constexpr int hintMaximumLines = 4;

/// What a row of the pane begins with.
enum class Row {
  permissionStack,
  permissionHint,
  loginItem,
  capsLockIndicator,
  externalFunctionKeys,
  externalFunctionKeysHint,
  localShortcut,
  localShortcutHint,
  fnReplacement,
  fnReplacementHint,
};

/// How a row's control stands between the pane's edges.
enum class Width {
  /// From inset to inset.
  full,
  /// From the leading inset, and at most to the trailing one.
  atMost,
  /// From the leading inset; the controls beside it see to the rest.
  leading,
};

struct RowLayout {
  Row row;
  /// From the bottom of the row above, or from the top of the pane.
  double topGap;
  Width width;
};

/// From the top to the bottom.
inline constexpr std::array<RowLayout, 10> rows{{
    {Row::permissionStack, 28, Width::atMost},
    {Row::permissionHint, 6, Width::full},
    {Row::loginItem, 16, Width::atMost},
    {Row::capsLockIndicator, 14, Width::atMost},
    {Row::externalFunctionKeys, 14, Width::atMost},
    {Row::externalFunctionKeysHint, 6, Width::full},
    {Row::localShortcut, 18, Width::leading},
    {Row::localShortcutHint, 6, Width::full},
    {Row::fnReplacement, 18, Width::leading},
    {Row::fnReplacementHint, 6, Width::full},
}};

/// Within the row of the permission.
inline constexpr double permissionStackSpacing = 8;
inline constexpr double permissionIndicatorSize = 8;
inline constexpr double permissionIndicatorCornerRadius = 4;

/// Beside the labels of the last two rows.
inline constexpr double minimumGapAfterLabel = 12;
inline constexpr double localShortcutMaximumWidth = 140;
inline constexpr double gapBeforeReset = 8;

/// At least, from the last row to the Quit button; and from that to the pane's bottom.
inline constexpr double minimumGapAboveQuit = 20;
inline constexpr double quitBottomGap = 20;

/// The popover's content, and its label within.
inline constexpr double popoverWidth = 280;
inline constexpr double popoverHeight = 72;
inline constexpr double popoverInset = 12;
inline constexpr double popoverLabelWidth = 256;

}  // namespace generalLayout

}  // namespace keyrow
