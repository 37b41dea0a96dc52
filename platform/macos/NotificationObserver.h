#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "platform/Registration.h"

namespace keyrow::macos {

/// Runs `handler` at every notification of that name in that centre, from any object,
/// until the token is destroyed: on the queue, or on the posting thread when it is nil.
ObserverToken observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                  NSOperationQueue* queue, std::function<void()> handler);

}  // namespace keyrow::macos
