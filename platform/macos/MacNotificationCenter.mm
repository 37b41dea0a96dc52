#import <Foundation/Foundation.h>

#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
#include "platform/macos/NotificationObserver.h"

namespace keyrow::macos {

namespace {

class MacNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view name) override {
    [NSNotificationCenter.defaultCenter postNotificationName:nsString(name) object:nil];
  }

  ObserverToken addObserver(std::string_view name, std::function<void()> handler) override {
    return observeNotification(NSNotificationCenter.defaultCenter, nsString(name),
                               NSOperationQueue.mainQueue, std::move(handler));
  }
};

}  // namespace

std::unique_ptr<NotificationCenter> makeNotificationCenter() {
  return std::make_unique<MacNotificationCenter>();
}

}  // namespace keyrow::macos
