#pragma once

#include "platform/DistributedNotificationCenter.h"

namespace keyrow::macos {

/// `DistributedNotificationCenter` on `NSDistributedNotificationCenter`.
class MacDistributedNotificationCenter final : public DistributedNotificationCenter {
 public:
  void post(std::string_view name, std::string_view object,
            const PropertyDictionary& userInfo) override;
  ObserverToken addObserver(std::string_view name, const std::optional<std::string>& object,
                            Handler handler) override;
};

}  // namespace keyrow::macos
