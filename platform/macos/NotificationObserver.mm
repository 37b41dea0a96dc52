#include "platform/macos/NotificationObserver.h"

#include <utility>

#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                  NSOperationQueue* queue, std::function<void()> handler) {
  // Removing an observer does not take back what is on the queue already.
  RevocableHandler revocable{std::move(handler)};
  const auto call = revocable.caller();
  const id observer = [center addObserverForName:name
                                          object:nil
                                           queue:queue
                                      usingBlock:^(NSNotification*) {
                                        call();
                                      }];
  return ObserverToken{[center, observer, revocable] { [center removeObserver:observer]; }};
}

}  // namespace keyrow::macos
