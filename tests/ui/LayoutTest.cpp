#include <gmock/gmock.h>

#include "ui/AboutLayout.h"
#include "ui/GeneralLayout.h"
#include "ui/StatusItemView.h"

namespace keyrow {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;

TEST(GeneralLayoutTest, SaysWhatItShouldSay) {
  using namespace generalLayout;
  EXPECT_EQ(permissionButtonTitle, "Accessibility Permission");
  EXPECT_EQ(permissionHelpTitle, "?");
  EXPECT_EQ(permissionHintText,
            "Keyrow needs both Accessibility and Input Monitoring for keyboard monitoring, "
            "global shortcuts, and external keyboard support.");
  EXPECT_EQ(loginItemTitle, "Launch at login");
  EXPECT_EQ(capsLockIndicatorTitle, "Show Caps Lock indicator");
  EXPECT_EQ(externalFunctionKeysTitle, "Apply Fn function to non-Apple vendor external F keys");
  EXPECT_EQ(externalFunctionKeysHintText,
            "When enabled, supported top-row F keys on non-Apple external keyboards follow the "
            "current Fn function.");
  EXPECT_EQ(localShortcutTitle, "Frontmost App Override Shortcut");
  EXPECT_EQ(resetTitle, "Reset");
  EXPECT_EQ(localShortcutHintText,
            "Use Fn plus this key to create or toggle an app-specific Fn override for the "
            "frontmost app, using a different Fn mode from the global setting.");
  EXPECT_EQ(fnReplacementTitle, "Fn replacement modifier");
  EXPECT_EQ(fnReplacementHintText,
            "Optional. Choose a modifier key to mirror Fn for Esc and the current app shortcut.");
  EXPECT_EQ(quitTitle, "Quit");
  EXPECT_EQ(popoverText,
            "Keyrow needs both Accessibility and Input Monitoring to detect Fn-related keyboard "
            "events, global shortcuts, and external keyboard input. If either permission does not "
            "take effect, remove Keyrow from that pane in Settings and add it again.");
}

TEST(GeneralLayoutTest, StandsWhereItShouldStand) {
  using namespace generalLayout;
  EXPECT_THAT(rows, ElementsAre(FieldsAre(Row::permissionStack, 28, Width::atMost),
                                FieldsAre(Row::permissionHint, 6, Width::full),
                                FieldsAre(Row::loginItem, 16, Width::atMost),
                                FieldsAre(Row::capsLockIndicator, 14, Width::atMost),
                                FieldsAre(Row::externalFunctionKeys, 14, Width::atMost),
                                FieldsAre(Row::externalFunctionKeysHint, 6, Width::full),
                                FieldsAre(Row::localShortcut, 18, Width::leading),
                                FieldsAre(Row::localShortcutHint, 6, Width::full),
                                FieldsAre(Row::fnReplacement, 18, Width::leading),
                                FieldsAre(Row::fnReplacementHint, 6, Width::full)));
  EXPECT_EQ(inset, 24);
  EXPECT_EQ(hintWidth, 372);
  EXPECT_EQ(hintMaximumLines, 4);
  EXPECT_EQ(permissionStackSpacing, 8);
  EXPECT_EQ(permissionIndicatorSize, 8);
  EXPECT_EQ(permissionIndicatorCornerRadius, 4);
  EXPECT_EQ(minimumGapAfterLabel, 12);
  EXPECT_EQ(localShortcutMaximumWidth, 140);
  EXPECT_EQ(gapBeforeReset, 8);
  EXPECT_EQ(minimumGapAboveQuit, 20);
  EXPECT_EQ(quitBottomGap, 20);
  EXPECT_EQ(popoverWidth, 280);
  EXPECT_EQ(popoverHeight, 72);
  EXPECT_EQ(popoverInset, 12);
  EXPECT_EQ(popoverLabelWidth, 256);
}

TEST(AboutLayoutTest, SaysWhatItShouldSay) {
  using namespace aboutLayout;
  EXPECT_EQ(descriptionText, "The missing Keyrow on macOS");
  EXPECT_EQ(contactTitle, "Contact");
  EXPECT_EQ(reportBugTitle, "Report a Bug");
  EXPECT_EQ(enhancedDiagnosticsTitle, "Include enhanced diagnostics in logs");
  EXPECT_EQ(enhancedDiagnosticsHintText,
            "Adds the app in use and your keyboard model to diagnostic logs.");
  EXPECT_EQ(autoUpdateTitle, "Automatically check for updates");
  EXPECT_EQ(checkUpdatesTitle, "Check for Updates");
}

TEST(AboutLayoutTest, StandsWhereItShouldStand) {
  using namespace aboutLayout;
  EXPECT_THAT(rows, ElementsAre(FieldsAre(Row::appIcon, 24, false, Width::centred),
                                FieldsAre(Row::description, 16, false, Width::full),
                                FieldsAre(Row::version, 8, true, Width::full),
                                FieldsAre(Row::contactActions, 12, false, Width::atMost),
                                FieldsAre(Row::enhancedDiagnostics, 8, false, Width::full),
                                FieldsAre(Row::enhancedDiagnosticsHint, 4, false, Width::full),
                                FieldsAre(Row::autoUpdate, 8, false, Width::full),
                                FieldsAre(Row::checkUpdates, 12, false, Width::atMost)));
  EXPECT_EQ(inset, 24);
  EXPECT_EQ(iconSize, 64);
  EXPECT_EQ(labelWidth, 372);
  EXPECT_EQ(hintMaximumLines, 2);
  EXPECT_EQ(actionsSpacing, 8);
  EXPECT_EQ(bottomGap, 20);
}

TEST(StatusItemLayoutTest, PutsBothDotsAtTheEdge) {
  constexpr StatusIndicatorLayout layout;
  EXPECT_EQ(layout.width, 6);
  EXPECT_EQ(layout.height, 6);
  EXPECT_EQ(layout.cornerRadius, 3);
  EXPECT_EQ(layout.leadingToButtonTrailing, -1);
  EXPECT_THAT(capsLockIndicatorColor, FieldsAre(0.26, 1.0, 0.36, 1.0));
  EXPECT_EQ(statusMenuX, 6);
}

}  // namespace
}  // namespace keyrow
