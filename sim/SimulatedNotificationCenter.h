#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/NotificationCenter.h"
#include "sim/ObserverList.h"
#include "sim/OpenHandles.h"

namespace keyrow::sim {

/// A process's notification centre.
class SimulatedNotificationCenter final : public NotificationCenter {
 public:
  SimulatedNotificationCenter(OpenHandles& handles, OpenHandles::ProcessID process)
      : handles_{handles}, process_{process} {}

  void post(std::string_view name) override {
    const auto found = observers.find(name);
    if (found != observers.end()) found->second.notify();
  }

  ObserverToken addObserver(std::string_view name, std::function<void()> handler) override {
    auto handle = std::make_shared<OpenHandle>(handles_, "observer", process_);
    return observers[std::string{name}].add(
        [handle = std::move(handle), handler = std::move(handler)] { handler(); });
  }

 private:
  OpenHandles& handles_;
  const OpenHandles::ProcessID process_;
  std::map<std::string, ObserverList<>, std::less<>> observers;
};

}  // namespace keyrow::sim
