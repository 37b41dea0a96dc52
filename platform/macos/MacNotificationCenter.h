#pragma once

#include <functional>
#include <string_view>

#include "platform/NotificationCenter.h"

namespace keyrow::macos {

/// `NotificationCenter` on `NSNotificationCenter`.
class MacNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view name) override;
  ObserverToken addObserver(std::string_view name, std::function<void()> handler) override;
};

}  // namespace keyrow::macos
