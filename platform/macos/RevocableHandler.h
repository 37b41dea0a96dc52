#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace keyrow::macos {

/// Keeps a handler that the system may call late: once the last copy of this object is
/// gone, its callers do nothing. A handler that is running is kept until it returns.
template <typename... Arguments>
class RevocableHandler {
 public:
  using Handler = std::function<void(Arguments...)>;

  explicit RevocableHandler(Handler handler)
      : handler_{std::make_shared<const Handler>(std::move(handler))} {}

  /// What to give to the system.
  Handler caller() const {
    return [weak = std::weak_ptr{handler_}](Arguments... arguments) {
      if (const auto handler = weak.lock()) (*handler)(arguments...);
    };
  }

 private:
  std::shared_ptr<const Handler> handler_;
};

}  // namespace keyrow::macos
