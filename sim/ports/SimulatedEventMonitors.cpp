#include "sim/ports/SimulatedEventMonitors.h"

#include <string>
#include <utility>

#include "sim/machine/KeyText.h"

namespace keyrow::sim {

namespace {

/// What a key types: its name in small letters, when that is a single character.
std::optional<std::string> charactersOf(std::uint16_t keyCode) {
  auto name = keyName(keyCode);
  if (name == sectionKeyName) return name;
  if (name.size() != 1) return std::nullopt;
  if (name[0] >= 'A' && name[0] <= 'Z') name[0] = static_cast<char>(name[0] - 'A' + 'a');
  return name;
}

}  // namespace

SimulatedEventMonitors::SimulatedEventMonitors(const ProcessContext& context)
    : context_{context},
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
      "own keys",
      std::function<void(const KeyDown&)>{
          [&screen = context_.mac.screen, handler = std::move(handler)](const KeyDown& key) {
            if (handler(key)) screen.note("Keyrow consumes " + keyName(key.keyCode));
          }});
  return keysDown_.add(std::move(observer));
}

void SimulatedEventMonitors::receive(std::uint32_t type, const KeyEvent& event) {
  const bool isActive = context_.mac.applications.frontmost() == context_.bundleIdentifier;
  // What is typed into another application's password field is for that alone.
  if (!isActive && context_.mac.isSecureInputOn()) return;
  if (type == keyEventType::flagsChanged) (isActive ? localFlags_ : globalFlags_).notify();
  if (type == keyEventType::keyDown && isActive) {
    keysDown_.notify(
        {.keyCode = event.keyCode, .charactersIgnoringModifiers = charactersOf(event.keyCode)});
  }
}

}  // namespace keyrow::sim
