#include "core/KeyboardFnStates.h"

#include <map>
#include <utility>

#include "core/StoredFnStates.h"

namespace keyrow {

std::map<KeyboardNumbers, FnState> KeyboardFnStates::all() const {
  std::map<KeyboardNumbers, FnState> states;
  const auto stored = storedDictionary(userDefaults_, settingsKey::keyboardFnStates);
  for (const auto& [text, value] : stored) {
    const auto numbers = keyboardNumbersFromText(text);
    const auto state = storedFnState(value);
    if (!numbers || !state) continue;
    if (text == numbers->text()) {
      states.insert_or_assign(*numbers, *state);
    } else {
      states.emplace(*numbers, *state);
    }
  }
  return states;
}

std::optional<FnState> KeyboardFnStates::of(const KeyboardNumbers& numbers) const {
  const auto states = all();
  const auto found = states.find(numbers);
  return found == states.end() ? std::nullopt : std::optional{found->second};
}

bool KeyboardFnStates::set(const KeyboardNumbers& numbers, std::optional<FnState> state) {
  auto stored = storedDictionary(userDefaults_, settingsKey::keyboardFnStates);
  const auto removed = std::erase_if(
      stored, [&](const auto& entry) { return keyboardNumbersFromText(entry.first) == numbers; });
  if (!state && removed == 0) return true;
  if (state) stored.emplace(numbers.text(), rawValue(*state));
  userDefaults_.setObject(settingsKey::keyboardFnStates, std::move(stored));
  return of(numbers) == state;
}

}  // namespace keyrow
