#include <dispatch/dispatch.h>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "platform/macos/MacPorts.h"
#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

namespace {

class MacMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> work) override {
    dispatch_async(dispatch_get_main_queue(), ^{
      work();
    });
  }

  DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) override {
    RevocableHandler<> revocable{std::move(work)};
    const auto call = revocable.caller();
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, delay.count()), dispatch_get_main_queue(), ^{
      @autoreleasepool {
        call();
      }
    });
    // That the work goes away with the call is all there is to undo.
    return DelayedCall{[revocable = std::move(revocable)] {}};
  }
};

}  // namespace

std::unique_ptr<MainQueue> makeMainQueue() { return std::make_unique<MacMainQueue>(); }

}  // namespace keyrow::macos
