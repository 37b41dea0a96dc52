#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sim/machine/ObserverList.h"

namespace keyrow::sim {

/// A process that runs, as others can reach it.
struct RunningProcess {
  std::int32_t processIdentifier = 0;
  std::optional<std::string> bundleIdentifier;
  /// Whose it is.
  std::string user;
  bool isTerminated = false;
  /// Asks it to quit; false when that cannot be sent.
  std::function<bool()> terminate;
  /// Ends it; false when that cannot be sent.
  std::function<bool()> forceTerminate;
};

/// The applications on the machine. Main thread only.
class Applications {
 public:
  /// Puts an application into /Applications, or somewhere else; once.
  void install(std::string bundleIdentifier, bool isElsewhere = false);
  void uninstall(std::string_view bundleIdentifier);
  const std::set<std::string, std::less<>>& installed() const { return installed_; }
  bool isInstalled(std::string_view bundleIdentifier) const {
    return installed_.contains(bundleIdentifier);
  }

  /// Whether it does not lie in /Applications.
  bool isElsewhere(std::string_view bundleIdentifier) const {
    return elsewhere_.contains(bundleIdentifier);
  }

  /// The frontmost application; absent when there is none or it has no identifier.
  const std::optional<std::string>& frontmost() const { return frontmost_; }

  /// Another user's application is in front now, which is no activation. Gives the one before.
  std::optional<std::string> exchangeFrontmost(std::optional<std::string> bundleIdentifier) {
    isFrontmostUnnamed_ = false;
    return std::exchange(frontmost_, std::move(bundleIdentifier));
  }

  /// The same in words, for none or one without an identifier, too.
  std::string nameOfFrontmost() const;

  /// Brings an application to the front and tells the observers; absent stands for none.
  void activate(std::optional<std::string> bundleIdentifier);

  /// Brings an application without a bundle identifier to the front.
  void activateUnnamed();

  /// The last process of an application has ended. Where it was in front, the application
  /// that was there before it comes to the front again.
  void ended(std::string_view bundleIdentifier);

  /// An application goes away from the front, to the one that was there before it.
  void stepBack(std::string_view bundleIdentifier);

  /// Calls `handler` at every activation.
  Registration observeActivation(std::function<void()> handler) {
    return activationObservers_.add(std::move(handler));
  }

  void started(std::shared_ptr<RunningProcess> process);

  /// The processes of an application that have not ended, in the order of their start.
  std::vector<std::shared_ptr<RunningProcess>> running(std::string_view bundleIdentifier) const;

 private:
  std::set<std::string, std::less<>> installed_;
  /// Those of them outside /Applications.
  std::set<std::string, std::less<>> elsewhere_;
  std::optional<std::string> frontmost_;
  bool isFrontmostUnnamed_ = false;
  /// Those that have been in front and have an identifier, each once, the last one last.
  std::vector<std::string> recent_;
  ObserverList<> activationObservers_;
  std::vector<std::shared_ptr<RunningProcess>> processes_;
};

}  // namespace keyrow::sim
