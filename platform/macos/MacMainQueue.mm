#include "platform/macos/MacMainQueue.h"

#include <dispatch/dispatch.h>

#include <utility>

#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

void MacMainQueue::async(std::function<void()> work) {
  dispatch_async(dispatch_get_main_queue(), ^{
    work();
  });
}

DelayedCall MacMainQueue::after(std::chrono::nanoseconds delay, std::function<void()> work) {
  RevocableHandler<> revocable{std::move(work)};
  const auto call = revocable.caller();
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, delay.count()), dispatch_get_main_queue(), ^{
    call();
  });
  // That the work goes away with the call is all there is to undo.
  return DelayedCall{[revocable = std::move(revocable)] {}};
}

}  // namespace keyrow::macos
