#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace keyrow::macos {

/// Keeps a handler that the system may call late: once the last copy of this object is
/// gone, its callers do nothing. A handler that is running is kept until it returns.
class RevocableHandler {
 public:
  explicit RevocableHandler(std::function<void()> handler)
      : handler_{std::make_shared<const std::function<void()>>(std::move(handler))} {}

  /// What to give to the system.
  std::function<void()> caller() const {
    return [weak = std::weak_ptr{handler_}] {
      if (const auto handler = weak.lock()) (*handler)();
    };
  }

 private:
  std::shared_ptr<const std::function<void()>> handler_;
};

}  // namespace keyrow::macos
