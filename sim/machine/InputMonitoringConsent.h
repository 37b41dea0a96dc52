#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/InputMonitoring.h"
#include "sim/machine/Screen.h"

namespace keyrow::sim {

/// What was said, in words.
constexpr std::string_view nameOf(InputMonitoringAccess access) {
  if (access == InputMonitoringAccess::unknown) return "not asked for";
  return access == InputMonitoringAccess::granted ? "granted" : "denied";
}

/// Thrown where a process's main thread would wait for the dialog, so that neither the dialog nor
/// anything else gets on.
class WaitsForConsent : public std::exception {
 public:
  const char* what() const noexcept override {
    return "the main thread waits until the user has answered about Input Monitoring";
  }
};

/// What the user has said about Input Monitoring, and the dialog that asks for it. Used in the
/// thread that runs the machine.
class InputMonitoringConsent {
 public:
  explicit InputMonitoringConsent(Screen& screen) : screen_{screen} {}

  InputMonitoringAccess access() const { return access_; }

  /// The user decides in System Settings, or macOS forgets what was decided. A dialog that is open
  /// stays.
  void set(InputMonitoringAccess access) {
    if (access_ == InputMonitoringAccess::granted && access != access_) ++withdrawalCount_;
    access_ = access;
  }

  /// How often it was taken away. What was opened before gets nothing from then on.
  std::uint64_t withdrawalCount() const { return withdrawalCount_; }

  /// A process asks: `answered` is called when the dialog is answered, or at once where there is
  /// an answer already.
  void ask(std::function<void()> answered) {
    if (access_ != InputMonitoringAccess::unknown) return answered();
    if (!isAsking()) screen_.note("macOS asks whether Keyrow may monitor the keyboard");
    waiting_.push_back(std::move(answered));
  }

  /// Whether the dialog is open.
  bool isAsking() const { return !waiting_.empty(); }

  /// The user answers the dialog.
  void answer(InputMonitoringAccess access) {
    set(access);
    for (const auto& answered : std::exchange(waiting_, {})) answered();
  }

 private:
  Screen& screen_;
  InputMonitoringAccess access_ = InputMonitoringAccess::granted;
  std::uint64_t withdrawalCount_ = 0;
  /// Who waits for the dialog.
  std::vector<std::function<void()>> waiting_;
};

}  // namespace keyrow::sim
