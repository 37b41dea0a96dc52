#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/DistributedNotificationCenter.h"
#include "sim/machine/ObserverList.h"
#include "sim/machine/Scheduler.h"

namespace keyrow::sim {

/// A notification on its way between processes.
struct DistributedNotification {
  std::string name;
  std::string object{};
  std::optional<PropertyDictionary> userInfo{};
  /// In whose session it was posted; absent for what the system tells everybody.
  std::optional<std::string> user{};
};

/// The notifications between the machine's processes, those of each user's session for itself.
/// They arrive a moment after they were posted.
class DistributedNotifications {
 public:
  explicit DistributedNotifications(Scheduler& scheduler) : scheduler_{scheduler} {}

  void post(DistributedNotification notification) {
    scheduler_.schedule(Scheduler::Duration{0}, [this, notification = std::move(notification)] {
      observers_.notify(notification);
    });
  }

  Registration observe(std::function<void(const DistributedNotification&)> handler) {
    return observers_.add(std::move(handler));
  }

 private:
  Scheduler& scheduler_;
  ObserverList<const DistributedNotification&> observers_;
};

}  // namespace keyrow::sim
