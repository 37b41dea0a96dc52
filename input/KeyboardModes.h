#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

#include "core/KeyboardDeviceSource.h"
#include "core/KeyboardFnStates.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The modes that keyboards have of their own, always as they are stored at the moment: they are
/// read again as soon as any setting has changed, and not before. Allocates nothing while nothing
/// changes. Safe to use from any thread.
class KeyboardModes {
 public:
  struct Uses {
    UserDefaults& userDefaults;
    const KeyboardFnStates& keyboardFnStates;
  };

  explicit KeyboardModes(const Uses& uses) : use_{uses} {}

  /// The mode of this keyboard; absent when it follows the hardware's, as one does that lacks a
  /// number.
  std::optional<FnState> of(const KeyboardDeviceSource& source);

 private:
  using Modes = std::map<KeyboardNumbers, FnState>;

  const Uses use_;

  /// Guards the fields below; not held while settings are read.
  std::mutex lock_;
  /// The count of changes when `modes_` was read; absent before.
  std::optional<std::uint64_t> changeCount_;
  Modes modes_;
};

}  // namespace keyrow
