#pragma once

#include <array>
#include <string_view>

#include "ui/PaneLayout.h"

namespace keyrow {

/// Everything in the General pane that never changes: texts, and where each control stands.
/// All lengths in points.
namespace generalLayout {

inline constexpr std::string_view permissionButtonTitle = "Accessibility Permission";
/// Where that is the one that is missing.
inline constexpr std::string_view inputMonitoringButtonTitle = "Input Monitoring Permission";
/// A help button (`NSBezelStyleHelpButton`) draws it by itself.
inline constexpr std::string_view permissionHelpTitle = "?";
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

inline constexpr int hintMaximumLines = 4;

/// What is there once: two hints are among it, because what they say changes.
enum class Control {
  permissionStack,
  localShortcut,
  localShortcutHint,
  fnReplacement,
  fnReplacementHint,
};

using RowLayout = PaneRow<Control>;

/// From the top to the bottom.
inline constexpr std::array rows{
    RowLayout{Control::permissionStack, {28, Width::atMost}},
    RowLayout{Hint{"Keyrow needs both Accessibility and Input Monitoring for keyboard monitoring, "
                   "global shortcuts, and external keyboard support."},
              {6, Width::full}},
    RowLayout{Checkbox{OtherSwitch::loginItem, "login-item", "Launch at login"},
              {16, Width::atMost}},
    RowLayout{Checkbox{BooleanSetting::showCapsLockIndicator, "caps-lock-indicator",
                       "Show Caps Lock indicator"},
              {14, Width::atMost}},
    RowLayout{Checkbox{BooleanSetting::applyFnModeToExternalFunctionKeys, "external-keys",
                       "Apply Fn function to non-Apple vendor external F keys"},
              {14, Width::atMost}},
    RowLayout{Hint{"When enabled, supported top-row F keys on non-Apple external keyboards follow "
                   "the current Fn function."},
              {6, Width::full}},
    RowLayout{Control::localShortcut, {18, Width::leading}},
    RowLayout{Control::localShortcutHint, {6, Width::full}},
    RowLayout{Control::fnReplacement, {18, Width::leading}},
    RowLayout{Control::fnReplacementHint, {6, Width::full}},
};

/// Within the row of the permission.
inline constexpr double permissionStackSpacing = 8;
inline constexpr double permissionIndicatorSize = 8;

/// Beside the labels of the last two rows.
inline constexpr double minimumGapAfterLabel = 12;
inline constexpr double localShortcutMaximumWidth = 140;
inline constexpr double gapBeforeReset = 8;

/// At least, from the last row to the Quit button; and from that to the pane's bottom.
inline constexpr double minimumGapAboveQuit = 20;
inline constexpr double quitBottomGap = 20;

/// The popover's content, which is as high as its text needs, and its label within.
inline constexpr double popoverWidth = 280;
inline constexpr double popoverInset = 12;
inline constexpr double popoverLabelWidth = popoverWidth - 2 * popoverInset;

}  // namespace generalLayout

}  // namespace keyrow
