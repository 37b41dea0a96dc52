#include "platform/macos/tests/LayoutFaults.h"

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

namespace {

/// Views stand on whole pixels, which on some screens are half points.
constexpr CGFloat tolerance = 0.5;

std::string nameOf(NSView* view) {
  auto name = utf8Text(view.className);
  if ([view isKindOfClass:NSButton.class]) {
    name += " \"" + utf8Text(((NSButton*)view).title) + "\"";
  } else if ([view isKindOfClass:NSTextField.class]) {
    name += " \"" + utf8Text(((NSTextField*)view).stringValue) + "\"";
  }
  return name;
}

std::string sizeText(NSSize size) { return utf8Text(NSStringFromSize(size)); }

/// The part of the view that the layout is about: a button's frame has room for its shadow.
NSRect place(NSView* view) { return [view alignmentRectForFrame:view.frame]; }

bool overlap(NSRect a, NSRect b) {
  return NSIntersectsRect(NSInsetRect(a, tolerance / 2, tolerance / 2),
                          NSInsetRect(b, tolerance / 2, tolerance / 2));
}

/// The size that shows all of a label that wraps, at the width that it has.
NSSize wholeSize(NSTextField* label) {
  NSTextField* const whole = [NSTextField wrappingLabelWithString:label.stringValue];
  whole.font = label.font;
  whole.maximumNumberOfLines = 0;
  const CGFloat width = label.frame.size.width;
  return NSMakeSize(width,
                    [whole.cell cellSizeForBounds:NSMakeRect(0, 0, width, CGFLOAT_MAX)].height);
}

class Check {
 public:
  explicit Check(NSView* pane) : pane_{pane} {
    if (pane.hasAmbiguousLayout) report("The pane has an ambiguous layout");
    checkSubviews(pane);
  }

  const std::string& faults() const { return faults_; }

 private:
  void report(const std::string& fault) { faults_ += fault + "\n"; }

  void checkSubviews(NSView* container) {
    NSArray<NSView*>* const views = [container isKindOfClass:NSStackView.class]
                                        ? ((NSStackView*)container).arrangedSubviews
                                        : container.subviews;
    for (NSUInteger index = 0; index < views.count; ++index) {
      NSView* const view = views[index];
      checkPlace(view);
      for (NSUInteger other = index + 1; other < views.count; ++other) {
        if (overlap(place(view), place(views[other]))) {
          report(nameOf(view) + " overlaps " + nameOf(views[other]));
        }
      }
      if ([view isKindOfClass:NSControl.class]) {
        checkSize((NSControl*)view);
      } else {
        checkSubviews(view);
      }
    }
  }

  void checkPlace(NSView* view) {
    if (view.hasAmbiguousLayout) report(nameOf(view) + " has an ambiguous layout");
    const NSRect inPane = [pane_ convertRect:place(view) fromView:view.superview];
    if (!NSContainsRect(NSInsetRect(pane_.bounds, -tolerance, -tolerance), inPane)) {
      report(nameOf(view) + " sticks out: " + utf8Text(NSStringFromRect(inPane)));
    }
  }

  void checkSize(NSControl* control) {
    const bool isLabel = [control isKindOfClass:NSTextField.class];
    if (!isLabel && ![control isKindOfClass:NSButton.class]) return;
    const bool saysAll = !isLabel && [control.toolTip isEqual:((NSButton*)control).title];
    if (saysAll) return;
    const bool wraps = isLabel && control.cell.wraps;
    const NSSize size = wraps ? control.frame.size : place(control).size;
    const NSSize needed = wraps ? wholeSize((NSTextField*)control) : control.intrinsicContentSize;
    if (size.width < needed.width - tolerance || size.height < needed.height - tolerance) {
      report(nameOf(control) + " is cut: it has " + sizeText(size) + " and needs " +
             sizeText(needed));
    }
  }

  NSView* const pane_;
  std::string faults_;
};

}  // namespace

std::string layoutFaults(NSView* pane) { return Check{pane}.faults(); }

}  // namespace keyrow::macos
