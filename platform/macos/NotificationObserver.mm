#include "platform/macos/NotificationObserver.h"

#include <utility>

#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name, id object,
                                  NSOperationQueue* queue,
                                  std::function<void(NSNotification*)> handler) {
  // Removing an observer does not take back what is on the queue already.
  RevocableHandler<NSNotification*> revocable{std::move(handler)};
  const auto call = revocable.caller();
  const id observer = [center addObserverForName:name
                                          object:object
                                           queue:queue
                                      usingBlock:^(NSNotification* notification) {
                                        call(notification);
                                      }];
  return ObserverToken{[center, observer, revocable] { [center removeObserver:observer]; }};
}

ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                  NSOperationQueue* queue, std::function<void()> handler) {
  return observeNotification(center, name, /*object=*/nil, queue,
                             [handler = std::move(handler)](NSNotification*) { handler(); });
}

}  // namespace keyrow::macos
