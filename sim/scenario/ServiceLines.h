#pragma once

#include <optional>
#include <string>

#include "platform/PropertyValue.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// What the Mac's mail service does with a draft.
struct SetMailService {
  Mailbox::Service service;
  Outcome play(Stage& stage) const;
};

/// The user switches Keyrow on or off among the login items.
struct SwitchLoginItem {
  bool isOn;
  Outcome play(Stage& stage) const;
};

/// From now on a login item needs to be approved, or does not.
struct RequireApproval {
  bool isRequired;
  Outcome play(Stage& stage) const;
};

/// Whether Keyrow may post notifications.
struct AllowNotifications {
  bool areAllowed;
  Outcome play(Stage& stage) const;
};

/// A scheduled check finds an update.
struct FindUpdate {
  std::string version;
  bool isInFocus;
  Outcome play(Stage& stage) const;
};

/// The user looks at an update.
struct AttendUpdate {
  Outcome play(Stage& stage) const;
};

/// The user has done with an update.
struct FinishUpdate {
  Outcome play(Stage& stage) const;
};

/// The user clicks the update reminder.
struct OpenNotification {
  Outcome play(Stage& stage) const;
};

/// What Keyrow's Info.plist holds.
struct SetInfo {
  std::string key;
  std::optional<PropertyValue> value;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
