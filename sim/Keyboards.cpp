#include "sim/Keyboards.h"

#include <utility>

namespace keyrow::sim {

void Keyboards::attach(const std::string& name, SimulatedKeyboard keyboard) {
  attached.insert_or_assign(name, std::make_shared<const SimulatedKeyboard>(std::move(keyboard)));
}

bool Keyboards::unplug(std::string_view name) {
  const auto found = attached.find(name);
  if (found == attached.end()) return false;
  attached.erase(found);
  return true;
}

std::shared_ptr<const SimulatedKeyboard> Keyboards::find(std::string_view name) const {
  const auto found = attached.find(name);
  return found == attached.end() ? nullptr : found->second;
}

}  // namespace keyrow::sim
