#pragma once

#include <functional>
#include <utility>

namespace keyrow {

/// Holds a registration with the system and undoes it when destroyed or replaced.
/// A default-made one holds nothing.
class [[nodiscard]] Registration {
 public:
  Registration() = default;
  /// `undo` runs once, on destruction.
  explicit Registration(std::function<void()> undo) : undo_{std::move(undo)} {}
  Registration(Registration&& other) noexcept : undo_{std::exchange(other.undo_, nullptr)} {}
  Registration& operator=(Registration&& other) noexcept {
    Registration old{std::move(*this)};
    undo_ = std::exchange(other.undo_, nullptr);
    return *this;
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() {
    if (undo_) undo_();
  }

  /// Whether there is something to undo.
  explicit operator bool() const { return undo_ != nullptr; }

 private:
  std::function<void()> undo_;
};

/// Keeps an observer registered; destroying it removes the observer.
using ObserverToken = Registration;

/// Keeps a delayed call pending; destroying it cancels a call that has not run yet.
using DelayedCall = Registration;

}  // namespace keyrow
