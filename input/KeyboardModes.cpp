#include "input/KeyboardModes.h"

#include <utility>

namespace keyrow {

namespace {

std::optional<FnState> modeIn(const std::map<KeyboardNumbers, FnState>& modes,
                              const KeyboardNumbers& numbers) {
  const auto found = modes.find(numbers);
  return found == modes.end() ? std::nullopt : std::optional{found->second};
}

}  // namespace

std::optional<FnState> KeyboardModes::of(const KeyboardDeviceSource& source) {
  const auto numbers = source.numbers();
  if (!numbers) return std::nullopt;
  // Asked before they are read: a change in between is seen the next time.
  const auto count = use_.userDefaults.changeCount();
  {
    const std::scoped_lock guard{lock_};
    if (changeCount_ == count) return modeIn(modes_, *numbers);
  }
  auto modes = use_.keyboardFnStates.all();
  const auto mode = modeIn(modes, *numbers);
  const std::scoped_lock guard{lock_};
  modes_ = std::move(modes);
  changeCount_ = count;
  return mode;
}

}  // namespace keyrow
