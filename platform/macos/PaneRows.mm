#include "platform/macos/PaneRows.h"

#include <algorithm>

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"

namespace keyrow::macos {

NSButton* PaneCheckboxes::make(const Checkbox& checkbox) {
  NSButton* const button = makeCheckbox(checkbox.title);
  button.accessibilityIdentifier = nsString(checkbox.name);
  buttons_[checkbox.what] = button;
  return button;
}

NSButton* PaneCheckboxes::of(Switch what) const {
  const auto found = buttons_.find(what);
  return found == buttons_.end() ? nil : found->second;
}

Switch PaneCheckboxes::whatSwitches(NSButton* button) const {
  return std::ranges::find_if(buttons_, [button](const auto& one) { return one.second == button; })
      ->first;
}

NSLayoutYAxisAnchor* placeRow(NSView* view, const RowPlace& place, NSLayoutYAxisAnchor* above,
                              NSView* pane, NSMutableArray<NSLayoutConstraint*>* constraints) {
  [pane addSubview:view];
  [constraints addObject:place.isTopGapMinimum
                             ? [view.topAnchor constraintGreaterThanOrEqualToAnchor:above
                                                                           constant:place.topGap]
                             : [view.topAnchor constraintEqualToAnchor:above
                                                              constant:place.topGap]];
  if (place.width == Width::centred) {
    [constraints addObject:[view.centerXAnchor constraintEqualToAnchor:pane.centerXAnchor]];
    return view.bottomAnchor;
  }
  [constraints addObject:[view.leadingAnchor constraintEqualToAnchor:pane.leadingAnchor
                                                            constant:paneInset]];
  if (place.width == Width::full) {
    [constraints addObject:[view.trailingAnchor constraintEqualToAnchor:pane.trailingAnchor
                                                               constant:-paneInset]];
  } else if (place.width == Width::atMost) {
    [constraints
        addObject:[view.trailingAnchor constraintLessThanOrEqualToAnchor:pane.trailingAnchor
                                                                constant:-paneInset]];
  }
  return view.bottomAnchor;
}

}  // namespace keyrow::macos
