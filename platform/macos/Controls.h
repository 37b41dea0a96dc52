#pragma once

#import <AppKit/AppKit.h>

#include <span>
#include <string_view>

namespace keyrow::macos {

/// Controls as the panes of the settings window have them, ready for constraints.

/// A checkbox with a title.
NSButton* makeCheckbox(std::string_view title);

/// A push button with a rounded bezel, whose title is cut at its end where it has to be.
NSButton* makePushButton(std::string_view title);

/// A label of one line in the system font.
NSTextField* makeLabel(std::string_view text);

/// A label in the small system font and the secondary colour that wraps.
NSTextField* makeHintLabel(std::string_view text, double maximumWidth, NSInteger maximumLines);

struct ConnectedControl {
  NSControl* control;
  SEL action;
};

/// Connects controls, one at least, with the actions of a target. The keyboard's focus goes
/// around them in this order.
void connectControls(id target, std::span<const ConnectedControl> controls);

/// Gives a control the keyboard's focus, where the user has that go to every control.
void focus(NSControl* control);

/// Whether the checkbox is on.
inline bool isOn(NSButton* checkbox) { return checkbox.state == NSControlStateValueOn; }

inline void setOn(NSButton* checkbox, bool on) {
  checkbox.state = on ? NSControlStateValueOn : NSControlStateValueOff;
}

}  // namespace keyrow::macos
