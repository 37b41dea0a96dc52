#include "sim/ports/SimulatedUserNotifications.h"

#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

namespace {

SystemError notAllowed() {
  return {"Notifications are not allowed for this application", "UNErrorDomain", 1};
}

}  // namespace

void SimulatedUserNotifications::requestAuthorization(
    std::function<void(bool granted, const std::optional<SystemError>& error)> completion) {
  auto& mac = context_.mac;
  std::optional<SystemError> error;
  if (!mac.call(PortCall::requestNotificationAuthorization)) {
    error = notAllowed();
  }
  // The user takes a moment to answer.
  mac.scheduler.schedule(std::chrono::seconds{1},
                         [thread = context_.mainThread, completion = std::move(completion), error,
                          granted = mac.notifications.isAuthorized] {
                           thread->deliver([=] { completion(granted && !error, error); });
                         });
}

void SimulatedUserNotifications::add(
    const UserNotification& notification,
    std::function<void(const std::optional<SystemError>& error)> completion) {
  auto& mac = context_.mac;
  if (!mac.call(PortCall::addNotification) || !mac.notifications.isAuthorized) {
    completion(notAllowed());
    return;
  }
  mac.notifications.delivered.insert_or_assign(notification.identifier, notification);
  mac.screen.note("notification " + quoted(notification.title) + ": " + notification.body);
  completion(std::nullopt);
}

void SimulatedUserNotifications::removePending(std::string_view /*identifier*/) {
  context_.mac.trace.add("remove pending notification");
}

void SimulatedUserNotifications::removeDelivered(std::string_view identifier) {
  context_.mac.trace.add("remove delivered notification");
  if (context_.mac.notifications.delivered.erase(std::string{identifier}) == 0) return;
  context_.mac.screen.note("the notification is taken back");
}

bool SimulatedUserNotifications::click(const std::string& identifier) {
  if (!context_.mac.notifications.delivered.contains(identifier)) return false;
  context_.mainThread->deliver([this, identifier] {
    if (delegate_) delegate_->didReceiveNotificationResponse(identifier, [] {});
  });
  return true;
}

}  // namespace keyrow::sim
