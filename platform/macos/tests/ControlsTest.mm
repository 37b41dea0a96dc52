#include "platform/macos/Controls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/macos/Conversions.h"

/// Counts what its controls send.
@interface KeyrowControlTarget : NSObject
@property int first;
@property int others;
@end

@implementation KeyrowControlTarget
- (void)first:(id)sender {
  ++self.first;
}
- (void)other:(id)sender {
  ++self.others;
}
@end

namespace keyrow::macos {
namespace {

constexpr auto longText =
    "A text that is so long that nobody has ever seen all of it in a single line of a window.";

double heightOf(NSTextField* label) { return label.intrinsicContentSize.height; }

TEST(ControlsTest, ACheckboxHasItsTitleAndTwoStates) {
  NSButton* const checkbox = makeCheckbox("Naïve 😀");
  EXPECT_EQ(utf8Text(checkbox.title), "Naïve 😀");
  EXPECT_FALSE(checkbox.allowsMixedState);
  EXPECT_FALSE(checkbox.translatesAutoresizingMaskIntoConstraints);
  EXPECT_FALSE(isOn(checkbox));
  setOn(checkbox, true);
  EXPECT_TRUE(isOn(checkbox));
  [checkbox performClick:nil];
  EXPECT_FALSE(isOn(checkbox));
  [checkbox performClick:nil];
  EXPECT_TRUE(isOn(checkbox));
}

TEST(ControlsTest, APushButtonCutsItsTitleAtTheEnd) {
  NSButton* const button = makePushButton("Reset");
  EXPECT_EQ(utf8Text(button.title), "Reset");
  EXPECT_EQ(button.bezelStyle, NSBezelStyleRounded);
  EXPECT_EQ(button.lineBreakMode, NSLineBreakByTruncatingTail);
  EXPECT_FALSE(button.translatesAutoresizingMaskIntoConstraints);
}

TEST(ControlsTest, ALabelIsALineToRead) {
  NSTextField* const label = makeLabel(longText);
  EXPECT_EQ(utf8Text(label.stringValue), longText);
  EXPECT_FALSE(label.editable);
  EXPECT_FALSE(label.bordered);
  EXPECT_FALSE(label.drawsBackground);
  EXPECT_EQ(label.font.pointSize, NSFont.systemFontSize);
  EXPECT_EQ(heightOf(label), heightOf(makeLabel("A")));
}

TEST(ControlsTest, AHintIsSmallAndWrapsIntoSoManyLines) {
  NSTextField* const hint = makeHintLabel(longText, /*maximumWidth=*/100, /*maximumLines=*/2);
  EXPECT_EQ(utf8Text(hint.stringValue), longText);
  EXPECT_FALSE(hint.editable);
  EXPECT_EQ(hint.font.pointSize, NSFont.smallSystemFontSize);
  EXPECT_TRUE([hint.textColor isEqual:NSColor.secondaryLabelColor]);
  EXPECT_LE(hint.intrinsicContentSize.width, 100 + 1);
  const double line = heightOf(makeHintLabel("A", 100, 2));
  EXPECT_GT(heightOf(hint), 1.5 * line);
  EXPECT_LT(heightOf(hint), 2.5 * line);
  EXPECT_GT(heightOf(makeHintLabel(longText, 100, 3)), 2.5 * line);
}

TEST(ControlsTest, ConnectedControlsSendTheirActionsAndGoAround) {
  KeyrowControlTarget* const target = [[KeyrowControlTarget alloc] init];
  NSButton* const first = makePushButton("1");
  NSButton* const second = makePushButton("2");
  NSButton* const third = makePushButton("3");
  const std::vector<ConnectedControl> controls{
      {first, @selector(first:)}, {second, @selector(other:)}, {third, @selector(other:)}};
  connectControls(target, controls);

  EXPECT_EQ(first.nextKeyView, second);
  EXPECT_EQ(second.nextKeyView, third);
  EXPECT_EQ(third.nextKeyView, first);

  [first performClick:nil];
  EXPECT_EQ(target.first, 1);
  EXPECT_EQ(target.others, 0);
  [second performClick:nil];
  [third performClick:nil];
  EXPECT_EQ(target.first, 1);
  EXPECT_EQ(target.others, 2);
}

}  // namespace
}  // namespace keyrow::macos
