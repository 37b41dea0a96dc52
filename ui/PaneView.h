#pragma once

#include "ui/Checkbox.h"
#include "ui/View.h"

namespace keyrow {

/// What the user does with a pane.
class PaneActions {
 public:
  /// The controls are there.
  virtual void viewDidLoad() = 0;

  /// The pane is about to be seen: in a window that opens, or because its tab was selected.
  virtual void viewWillAppear() = 0;

  /// A check box of the pane was clicked, and stands at this now.
  virtual void toggle(Switch what, bool isOn) = 0;

 protected:
  ~PaneActions() = default;
};

/// A pane of the settings window.
template <typename ActionsOfPane>
class PaneView : public View<ActionsOfPane> {
 public:
  /// Of the pane's check box that switches this.
  virtual void setChecked(Switch what, bool checked) = 0;

  /// How high the pane has to be for what it shows now, in points (`fittingSize`). Loads the pane
  /// when it is not there yet.
  virtual double fittingHeight() = 0;
};

}  // namespace keyrow
