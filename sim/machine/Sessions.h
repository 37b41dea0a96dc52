#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sim/machine/Applications.h"
#include "sim/machine/ObserverList.h"

namespace keyrow::sim {

/// The users who are logged in. One of them has the screen and the keyboards; the keyboard's mode
/// is the machine's, and all else is a user's own. Main thread only.
class Sessions {
 public:
  /// Who is there in the beginning.
  static constexpr std::string_view firstUser = "me";

  explicit Sessions(Applications& applications) : applications_{applications} {}

  const std::string& active() const { return active_; }

  /// Whether this user has a session, in front or not.
  bool isLoggedIn(const std::string& user) const {
    return user == firstUser || user == active_ || frontmost_.contains(user);
  }

  /// Who has the console, for whoever asks: that changes between the two notices of a switch.
  const std::string& onConsole() const { return onConsole_; }

  /// Another user has the screen from now on. macOS tells both; who hears of it first, is open.
  void switchTo(const std::string& user, bool isNewToldFirst) {
    const auto old = std::exchange(active_, user);
    frontmost_[old] = applications_.exchangeFrontmost(frontmost_[user]);
    // Also where whoever is told ends in the middle of it.
    const struct Arrival {
      std::string& onConsole;
      const std::string& user;
      ~Arrival() { onConsole = user; }
    } arrival{onConsole_, active_};
    if (isNewToldFirst) {
      observers_[user].became.notify();
      onConsole_ = user;
      observers_[old].resigned.notify();
    } else {
      observers_[old].resigned.notify();
      onConsole_ = user;
      observers_[user].became.notify();
    }
  }

  /// What is in front in a user's session.
  std::optional<std::string> frontmost(const std::string& user) const {
    if (user == active_) return applications_.frontmost();
    const auto found = frontmost_.find(user);
    return found == frontmost_.end() ? std::nullopt : found->second;
  }

  Registration observeResigned(const std::string& user, std::function<void()> handler) {
    return observers_[user].resigned.add(std::move(handler));
  }
  Registration observeBecameActive(const std::string& user, std::function<void()> handler) {
    return observers_[user].became.add(std::move(handler));
  }

  /// A user's own domain of settings.
  static std::string domain(std::string_view user, std::string_view domain) {
    return user == firstUser ? std::string{domain} : std::string{user} + "/" + std::string{domain};
  }

 private:
  struct Observers {
    ObserverList<> resigned;
    ObserverList<> became;
  };

  Applications& applications_;
  std::string active_{firstUser};
  std::string onConsole_{firstUser};
  /// Of the users who are not there.
  std::map<std::string, std::optional<std::string>> frontmost_;
  std::map<std::string, Observers> observers_;
};

}  // namespace keyrow::sim
