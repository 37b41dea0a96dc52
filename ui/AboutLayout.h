#pragma once

#include <array>
#include <string_view>

#include "ui/PaneLayout.h"

namespace keyrow {

/// Everything in the About pane that never changes: texts, and where each control stands.
/// All lengths in points.
namespace aboutLayout {

inline constexpr std::string_view descriptionText = "The missing Keyrow on macOS";
inline constexpr std::string_view contactTitle = "Contact";
inline constexpr std::string_view reportBugTitle = "Report a Bug";
inline constexpr std::string_view checkUpdatesTitle = "Check for Updates";

inline constexpr double iconSize = 64;
inline constexpr int hintMaximumLines = 2;
inline constexpr double actionsSpacing = 8;

/// What is there once.
enum class Control { appIcon, description, version, contactActions, checkUpdates };

using RowLayout = PaneRow<Control>;

/// From the top to the bottom.
inline constexpr std::array rows{
    RowLayout{Control::appIcon, {24, Width::centred}},
    RowLayout{Control::description, {16, Width::full}},
    RowLayout{Control::version, {8, Width::full, /*isTopGapMinimum=*/true}},
    RowLayout{Control::contactActions, {12, Width::atMost}},
    RowLayout{Checkbox{BooleanSetting::enhancedDiagnosticsEnabled, "diagnostics",
                       "Include enhanced diagnostics in logs"},
              {8, Width::full}},
    RowLayout{Hint{"Adds the app in use and your keyboard model to diagnostic logs."},
              {4, Width::full}},
    RowLayout{
        Checkbox{OtherSwitch::automaticUpdates, "auto-update", "Automatically check for updates"},
        {8, Width::full}},
    RowLayout{Control::checkUpdates, {12, Width::atMost}},
};

/// Of the last row, to the pane's bottom.
inline constexpr double bottomGap = 20;

}  // namespace aboutLayout

}  // namespace keyrow
