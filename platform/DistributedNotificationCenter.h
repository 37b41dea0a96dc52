#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/PropertyValue.h"
#include "platform/Registration.h"

namespace keyrow {

/// Notifications between processes (`NSDistributedNotificationCenter`).
class DistributedNotificationCenter : public Port {
 public:
  /// Gets a notification's user info; absent when it brings none.
  using Handler = std::function<void(const std::optional<PropertyDictionary>& userInfo)>;

  /// Posts to all processes at once (`deliverImmediately`).
  virtual void post(std::string_view name, std::string_view object,
                    const PropertyDictionary& userInfo) = 0;

  /// Runs `handler` on the main thread at every notification of that name from that object,
  /// until the token is destroyed; also while this application is not active
  /// (`NSNotificationSuspensionBehaviorDeliverImmediately`). An absent object stands for any.
  virtual ObserverToken addObserver(std::string_view name, const std::optional<std::string>& object,
                                    Handler handler) = 0;
};

}  // namespace keyrow
