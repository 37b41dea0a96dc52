#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/NotificationCenter.h"
#include "sim/machine/ObserverList.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// A process's notification centre.
class SimulatedNotificationCenter final : public NotificationCenter {
 public:
  explicit SimulatedNotificationCenter(const ProcessContext& context) : context_{context} {}

  void post(std::string_view name) override {
    const auto found = observers_.find(name);
    if (found != observers_.end()) found->second.notify();
  }

  ObserverToken addObserver(std::string_view name, std::function<void()> handler) override {
    return observers_[std::string{name}].add(
        context_.observer(std::string{name}, std::move(handler)));
  }

 private:
  const ProcessContext& context_;
  std::map<std::string, ObserverList<>, std::less<>> observers_;
};

}  // namespace keyrow::sim
