#pragma once

#include <atomic>
#include <cstdint>

#include "core/AppSettings.h"
#include "platform/KeyEvent.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The settings that every key asks for, always as they are at the moment: they are read
/// again as soon as any setting has changed, and not before. Takes no lock and allocates
/// nothing while nothing changes. Safe to use from any thread.
class KeySettings {
 public:
  struct Values {
    /// Of these event flags any one says that Fn is held, or what stands in for it.
    std::uint64_t fnLikeFlags = keyEventFlag::secondaryFn;
    /// Of the per-app shortcut.
    std::uint16_t localToggleShortcutKeyCode = 0;
    bool applyFnModeToExternalFunctionKeys = false;
    bool enhancedDiagnosticsEnabled = false;
  };

  struct Uses {
    UserDefaults& userDefaults;
    const AppSettings& settings;
  };

  explicit KeySettings(const Uses& uses) : use_{uses} {}

  Values current();

 private:
  const Uses use_;

  /// The values as last read with, above them, the count of changes at that time; all in
  /// one, so that whoever reads it has what belongs together.
  std::atomic<std::uint64_t> cache_{0};
};

}  // namespace keyrow
