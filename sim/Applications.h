#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "sim/ObserverList.h"

namespace keyrow::sim {

/// The applications on the machine. Main thread only.
class Applications {
 public:
  void install(std::string bundleIdentifier) { installed.insert(std::move(bundleIdentifier)); }
  void uninstall(std::string_view bundleIdentifier);
  bool isInstalled(std::string_view bundleIdentifier) const {
    return installed.contains(bundleIdentifier);
  }

  /// The frontmost application; absent when there is none or it has no identifier.
  const std::optional<std::string>& frontmost() const { return frontmost_; }

  /// Brings an application to the front and tells the observers.
  void activate(std::optional<std::string> bundleIdentifier);

  /// Calls `handler` at every activation.
  Registration observeActivation(std::function<void()> handler) {
    return activationObservers.add(std::move(handler));
  }

 private:
  std::set<std::string, std::less<>> installed;
  std::optional<std::string> frontmost_;
  ObserverList<> activationObservers;
};

}  // namespace keyrow::sim
