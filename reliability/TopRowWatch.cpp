#include "reliability/TopRowWatch.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <variant>

#include "core/AppSettings.h"
#include "core/KeyboardNumbers.h"
#include "platform/HidManagers.h"
#include "reliability/StageSights.h"
#include "sim/machine/KeyText.h"
#include "sim/scenario/Action.h"

namespace keyrow::reliability {

namespace {

/// What the top row has media and system keys for.
constexpr std::array<std::string_view, 10> translatedKeys{"F1", "F2", "F3",  "F4",  "F7",
                                                          "F8", "F9", "F10", "F11", "F12"};

const std::int64_t* numberOf(const sim::SimulatedKeyboard& keyboard, std::string_view property) {
  const auto found = keyboard.properties.find(property);
  return found == keyboard.properties.end() ? nullptr : found->second.integer();
}

bool isOfOtherMake(const sim::SimulatedKeyboard& keyboard) {
  constexpr std::int64_t apple = 0x05AC;
  const auto builtIn = keyboard.properties.find("Built-In");
  const auto* vendor = numberOf(keyboard, "VendorID");
  return builtIn != keyboard.properties.end() && builtIn->second == PropertyValue{false} &&
         vendor && *vendor != apple;
}

/// The mode that is stored for a keyboard, plainly enough for anybody.
std::optional<FnState> storedMode(const sim::SimulatedKeyboard& keyboard,
                                  const std::optional<PropertyValue>& stored) {
  const auto* vendor = numberOf(keyboard, "VendorID");
  const auto* product = numberOf(keyboard, "ProductID");
  const auto* modes = stored ? stored->dictionary() : nullptr;
  if (!vendor || !product || !modes) return std::nullopt;
  const auto text =
      KeyboardNumbers{static_cast<std::uint32_t>(*vendor), static_cast<std::uint32_t>(*product)}
          .text();
  const auto found = modes->find(text);
  const auto* raw = found == modes->end() ? nullptr : found->second.integer();
  return raw ? fnStateFromRawValue(*raw) : std::nullopt;
}

}  // namespace

TopRowWatch::TopRowWatch(sim::Stage& stage)
    : stage_{stage}, inputs_{stage.mac.keyboards.observeInput([this](const auto& input) {
        const bool isLater = input.timestamp > lastInputTime_;
        areInputsMixed_ = !isLater && (areInputsMixed_ || input.keyboard != lastKeyboard_);
        if (!isLater) return;
        lastInputTime_ = input.timestamp;
        lastKeyboard_ = input.keyboard;
      })} {}

void TopRowWatch::look(const sim::Action& action) {
  promise_.reset();
  if (const auto* press = std::get_if<sim::Press>(&action)) promise_ = promiseOf(press->keys);
  if (const auto* hold = std::get_if<sim::HoldDown>(&action)) promise_ = promiseOf(hold->keys);
}

std::string TopRowWatch::problem(bool isDone) {
  // A keyboard that cannot be read is read again at its next input.
  const bool wasRead = !hasFailed(stage_, sim::PortCall::readDeviceProperty);
  if (!promise_ || !isDone || !wasRead) return {};
  const bool reaches = std::ranges::any_of(stage_.recentTimeline(), [&](const auto& event) {
    // A modifier may be held.
    return event.kind == sim::TimelineEvent::Kind::key &&
           event.terms.front().starts_with("\"" + promise_->key + " down ") &&
           event.terms.front().contains(" reaches ");
  });
  if (reaches == (promise_->mode == FnState::standard)) return {};
  return promise_->key + (reaches ? " reached an application" : " did not reach an application") +
         " against the mode of its keyboard";
}

std::optional<TopRowWatch::Promise> TopRowWatch::promiseOf(const sim::Keys& what) {
  auto& mac = stage_.mac;
  auto* process = stage_.process();
  const bool isAlone = process && stage_.runningCount() == 1 && !stage_.isAnyHanging();
  const auto keyboard = what.keyboard ? mac.keyboards.find(*what.keyboard) : nullptr;
  if (!isAlone || !keyboard || what.keys.size() != 1 || what.lateness.count() != 0) {
    return std::nullopt;
  }
  const auto keyCode = what.keys.front().keyCode;
  auto name = sim::keyName(keyCode);
  const auto& settings = process->keyrow().settings();
  const bool isTopRow = std::ranges::find(translatedKeys, name) != translatedKeys.end() &&
                        keyCode != settings.localToggleShortcutKeyCode() &&
                        settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys);
  // The window may be waiting for a key. Of two keyboards that send an input in the same moment,
  // nobody can tell whose the key is.
  const bool isItsKey =
      !process->settingsWindow().isVisible() &&
      ((lastKeyboard_ == keyboard && !areInputsMixed_) || lastInputTime_ < mac.machAbsoluteTime());
  if (!isTopRow || !isItsKey || !isSeen(*keyboard) || !isOfOtherMake(*keyboard)) {
    return std::nullopt;
  }
  const auto mode = storedMode(
      *keyboard, mac.defaults.value(stage_.keyrowDomain(), settingsKey::keyboardFnStates));
  return mode ? std::optional{Promise{std::move(name), *mode}} : std::nullopt;
}

bool TopRowWatch::isSeen(const sim::SimulatedKeyboard& keyboard) {
  const auto& mac = stage_.mac;
  return mac.eventTaps.state() == "working" && mac.isAccessibilityGranted &&
         !mac.isSecureInputOn() && !mac.areEventTimesNanoseconds &&
         stage_.process()->simulatedPlatform().hidManagers.hears(keyboard,
                                                                 hidPage::keyboardOrKeypad);
}

}  // namespace keyrow::reliability
