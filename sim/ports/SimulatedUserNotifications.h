#pragma once

#include "platform/UserNotifications.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The machine's notifications, as Keyrow posts them and hears of them.
class SimulatedUserNotifications final : public UserNotifications {
 public:
  explicit SimulatedUserNotifications(const ProcessContext& context) : context_{context} {}

  void setDelegate(UserNotificationsDelegate& delegate) override { delegate_ = &delegate; }
  void requestAuthorization(
      std::function<void(bool granted, const std::optional<SystemError>& error)> completion)
      override;
  void add(const UserNotification& notification,
           std::function<void(const std::optional<SystemError>& error)> completion) override;
  void removePending(std::string_view identifier) override;
  void removeDelivered(std::string_view identifier) override;

  /// The user clicks a notification; false when there is none of that identifier.
  bool click(const std::string& identifier);

  /// How the system would present one while Keyrow is in front.
  NotificationPresentation presentation(std::string_view identifier) {
    return delegate_ ? delegate_->willPresentNotification(identifier)
                     : NotificationPresentation::none;
  }

 private:
  const ProcessContext& context_;
  UserNotificationsDelegate* delegate_ = nullptr;
};

}  // namespace keyrow::sim
