#include "sim/machine/Keyboards.h"

#include <utility>

namespace keyrow::sim {

void Keyboards::attach(const std::string& name, SimulatedKeyboard keyboard) {
  if (keyboard.registryID) names_.insert_or_assign(*keyboard.registryID, name);
  everAttached_.insert(name);
  attached_.insert_or_assign(name, std::make_shared<const SimulatedKeyboard>(std::move(keyboard)));
  changeObservers_.notify(Change::attached);
}

bool Keyboards::unplug(std::string_view name) {
  const auto found = attached_.find(name);
  if (found == attached_.end()) return false;
  attached_.erase(found);
  changeObservers_.notify(Change::removed);
  return true;
}

std::shared_ptr<const SimulatedKeyboard> Keyboards::find(std::string_view name) const {
  const auto found = attached_.find(name);
  return found == attached_.end() ? nullptr : found->second;
}

std::vector<std::string> Keyboards::attachedNames() const {
  std::vector<std::string> names;
  names.reserve(attached_.size());
  for (const auto& [name, keyboard] : attached_) names.push_back(name);
  return names;
}

void Keyboards::setProperty(std::string_view name, const std::string& key, PropertyValue value) {
  const auto found = attached_.find(name);
  if (found == attached_.end()) return;
  auto changed = *found->second;
  changed.properties.insert_or_assign(key, std::move(value));
  found->second = std::make_shared<const SimulatedKeyboard>(std::move(changed));
}

std::vector<std::shared_ptr<const SimulatedKeyboard>> Keyboards::all() const {
  std::vector<std::shared_ptr<const SimulatedKeyboard>> keyboards;
  keyboards.reserve(attached_.size());
  for (const auto& [name, keyboard] : attached_) keyboards.push_back(keyboard);
  return keyboards;
}

std::optional<std::string> Keyboards::nameOf(std::optional<std::uint64_t> registryID) const {
  if (!registryID) return std::nullopt;
  const auto found = names_.find(*registryID);
  return found == names_.end() ? std::nullopt : std::optional{found->second};
}

}  // namespace keyrow::sim
