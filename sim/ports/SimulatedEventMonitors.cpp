#include "sim/ports/SimulatedEventMonitors.h"

#include <string>
#include <utility>

#include "sim/machine/KeyText.h"

namespace keyrow::sim {

namespace {

/// What a key types: its name, when that is a single character, as a capital or not.
std::optional<std::string> charactersOf(const KeyEvent& event, std::uint64_t flagsOfCapitals) {
  auto name = keyName(event.keyCode);
  if (name == sectionKeyName) return name;
  if (name.size() != 1) return std::nullopt;
  const bool isCapital = (event.flags & flagsOfCapitals) != 0;
  if (name[0] >= 'A' && name[0] <= 'Z' && !isCapital) {
    name[0] = static_cast<char>(name[0] - 'A' + 'a');
  }
  return name;
}

}  // namespace

SimulatedEventMonitors::SimulatedEventMonitors(const ProcessContext& context,
                                               std::function<void(const KeyDown&)> keyDown)
    : context_{context},
      keyDown_{std::move(keyDown)},
      keyEvents_{context.mac.observeKeyEvents(
          [this](std::uint32_t type, const KeyEvent& event) { receive(type, event); })} {}

Registration SimulatedEventMonitors::addGlobalFlagsMonitor(std::function<void()> handler) {
  return globalFlags_.add(context_.observer("flags of others", std::move(handler)));
}

Registration SimulatedEventMonitors::addLocalFlagsMonitor(std::function<void()> handler) {
  return localFlags_.add(context_.observer("own flags", std::move(handler)));
}

Registration SimulatedEventMonitors::addLocalKeyDownMonitor(
    std::function<bool(const KeyDown&)> handler) {
  auto observer = context_.observer(
      "own keys", std::function<void(std::shared_ptr<PassingKey>)>{
                      [&screen = context_.mac.screen,
                       handler = std::move(handler)](const std::shared_ptr<PassingKey>& passing) {
                        if (passing->isConsumed || !handler(passing->key)) return;
                        passing->isConsumed = true;
                        screen.note("Keyrow consumes " + keyName(passing->key.keyCode));
                      }});
  return keysDown_.add(std::move(observer));
}

void SimulatedEventMonitors::receive(std::uint32_t type, const KeyEvent& event) {
  // Whatever a menu that is open gets, no monitor sees.
  if (context_.mainThread->isTrackingMenu()) return;
  const bool isActive = context_.mac.applications.frontmost() == context_.bundleIdentifier;
  // What is typed into another application's password field is for that alone.
  if (!isActive && context_.mac.isSecureInputOn()) return;
  if (type == keyEventType::flagsChanged) (isActive ? localFlags_ : globalFlags_).notify();
  if (type != keyEventType::keyDown || !isActive) return;
  const auto passing = std::make_shared<PassingKey>(
      KeyDown{.keyCode = event.keyCode,
              .charactersIgnoringModifiers = charactersOf(event, keyEventFlag::shift),
              .characters = charactersOf(event, keyEventFlag::shift | keyEventFlag::alphaShift),
              .flags = event.flags,
              .isRepeat = event.isRepeat});
  keysDown_.notify(passing);
  context_.mainThread->deliver([this, passing] {
    if (!passing->isConsumed) keyDown_(passing->key);
  });
}

}  // namespace keyrow::sim
