#pragma once

#include <string>
#include <utility>

#include "platform/DistributedNotificationCenter.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The notifications between processes, as one of them takes part.
class SimulatedDistributedNotificationCenter final : public DistributedNotificationCenter {
 public:
  explicit SimulatedDistributedNotificationCenter(const ProcessContext& context)
      : context_{context} {}

  void post(std::string_view name, std::string_view object,
            const PropertyDictionary& userInfo) override {
    context_.mac.trace.add("post " + std::string{name});
    context_.mac.distributedNotifications.post(
        {std::string{name}, std::string{object}, userInfo, context_.user});
  }

  ObserverToken addObserver(std::string_view name, const std::optional<std::string>& object,
                            Handler handler) override {
    return context_.mac.distributedNotifications.observe(
        [name = std::string{name}, object, user = context_.user,
         observer = context_.observer(std::string{name}, std::move(handler))](
            const DistributedNotification& notification) {
          if (notification.name != name) return;
          if (object && notification.object != object) return;
          if (notification.user && notification.user != user) return;
          observer(notification.userInfo);
        });
  }

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
