#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/Registration.h"

namespace keyrow::sim {

/// Handlers that want to be called. An observer may be added and removed at any time,
/// also from within a handler; a removed one is not called any more.
template <typename... Arguments>
class ObserverList {
 public:
  using Handler = std::function<void(Arguments...)>;

  Registration add(Handler handler) {
    const auto number = addedCount_++;
    handlers_->emplace(number, std::make_shared<Handler>(std::move(handler)));
    return Registration{[weak = std::weak_ptr{handlers_}, number] {
      if (const auto list = weak.lock()) list->erase(number);
    }};
  }

  void notify(const Arguments&... arguments) const {
    std::vector<std::weak_ptr<Handler>> now;
    for (const auto& [number, handler] : *handlers_) now.push_back(handler);
    for (const auto& weak : now) {
      if (const auto handler = weak.lock()) (*handler)(arguments...);
    }
  }

 private:
  std::uint64_t addedCount_ = 0;
  std::shared_ptr<std::map<std::uint64_t, std::shared_ptr<Handler>>> handlers_ =
      std::make_shared<std::map<std::uint64_t, std::shared_ptr<Handler>>>();
};

}  // namespace keyrow::sim
