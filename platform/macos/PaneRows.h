#pragma once

#import <AppKit/AppKit.h>

#include <map>

#include "ui/PaneLayout.h"

namespace keyrow::macos {

/// The check boxes of a pane, by what they switch.
class PaneCheckboxes {
 public:
  /// Makes the check box.
  NSButton* make(const Checkbox& checkbox);

  /// The one that switches this; nil when there is none.
  NSButton* of(Switch what) const;

  /// What one of them switches.
  Switch whatSwitches(NSButton* button) const;

 private:
  std::map<Switch, NSButton*> buttons_;
};

/// Adds a row's view to the pane, and the constraints of its place below the row above; gives
/// what the next row is below.
NSLayoutYAxisAnchor* placeRow(NSView* view, const RowPlace& place, NSLayoutYAxisAnchor* above,
                              NSView* pane, NSMutableArray<NSLayoutConstraint*>* constraints);

}  // namespace keyrow::macos
