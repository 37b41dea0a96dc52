#include "sim/ports/SimulatedUserDefaults.h"

#include <chrono>
#include <memory>
#include <utility>

namespace keyrow::sim {

namespace {

/// How late a process hears of what others write.
constexpr std::chrono::milliseconds lateness{300};

}  // namespace

ObserverToken SimulatedUserDefaults::observeChanges(std::function<void()> handler) {
  const auto held = std::make_shared<const std::function<void()>>(std::move(handler));
  return mac_.defaults.observe(domain_, [this, held] {
    if (isWriting_) {
      (*held)();
      return;
    }
    mac_.scheduler.schedule(lateness, [weak = std::weak_ptr{held}] {
      if (const auto observer = weak.lock()) (*observer)();
    });
  });
}

void SimulatedUserDefaults::write(std::string_view key, std::optional<PropertyValue> value) {
  if (!mac_.call(PortCall::writeDefaults)) return;
  // The first is on its way already, whatever becomes of the others.
  if (std::exchange(hasWritten_, true)) before_.try_emplace(std::string{key}, object(key));
  isWriting_ = true;
  mac_.defaults.setValue(domain_, key, std::move(value));
  isWriting_ = false;
}

bool SimulatedUserDefaults::synchronize() {
  if (!mac_.call(PortCall::writeDefaults)) return false;
  before_.clear();
  hasWritten_ = false;
  return true;
}

void SimulatedUserDefaults::loseWhatIsOnTheWay() {
  for (auto& [key, value] : std::exchange(before_, {})) {
    mac_.defaults.setValue(domain_, key, std::move(value));
  }
}

}  // namespace keyrow::sim
