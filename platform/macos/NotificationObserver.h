#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "platform/Registration.h"

namespace keyrow::macos {

/// Runs `handler` at every notification of that name and object in that centre, until the
/// token is destroyed: on the queue, or on the posting thread when it is nil. A nil object
/// stands for any.
ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name, id object,
                                  NSOperationQueue* queue,
                                  std::function<void(NSNotification*)> handler);

/// The same from any object, for who needs to know no more than that it happened.
ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                  NSOperationQueue* queue, std::function<void()> handler);

}  // namespace keyrow::macos
