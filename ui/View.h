#pragma once

#include "platform/Port.h"

namespace keyrow {

/// What the user sees, as a port: it shows what it is told to, and tells its `Actions` what
/// the user does with it.
template <typename ActionsOfView>
class View : public Port {
 public:
  using Actions = ActionsOfView;

  /// Whom it tells; set before it is used, and has to outlive it.
  void setActions(Actions& actions) { actions_ = &actions; }

 protected:
  Actions& actions() const { return *actions_; }

 private:
  Actions* actions_ = nullptr;
};

}  // namespace keyrow
