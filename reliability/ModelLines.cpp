#include "reliability/ModelLines.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "core/AppSettings.h"
#include "core/LocalToggleShortcut.h"
#include "ui/GeneralLayout.h"
#include "ui/StatusMenu.h"

namespace keyrow::reliability {

namespace {

/// The faults that the model knows, where they last until the next repair.
struct KnownFault {
  sim::PortCall call;
  bool preventsReading;
  bool preventsWriting;
};
constexpr std::array<KnownFault, 4> knownFaults{{
    {sim::PortCall::findService, true, true},
    {sim::PortCall::readServiceProperty, true, false},
    {sim::PortCall::openConnection, false, true},
    {sim::PortCall::setHidParameter, false, true},
}};

bool isFnWith(const sim::Keys& keys, std::uint16_t keyCode) {
  /// `kVK_Function` (HIToolbox Events.h).
  constexpr std::uint16_t fn = 63;
  return keys.keys.size() == 2 && keys.keys[0].keyCode == fn && keys.keys[1].keyCode == keyCode;
}

/// What each line means to somebody who only knows modes. A line that is missing here does not
/// compile.
struct Meaning {
  ModeModel& model;

  bool operator()(const sim::Install& line) const {
    model.installed.insert(line.app);
    return true;
  }
  bool operator()(const sim::Uninstall& line) const {
    model.installed.erase(line.app);
    return true;
  }
  bool operator()(const sim::Front& line) const {
    model.switchTo(line.app);
    return true;
  }
  bool operator()(const sim::ChangeInSystemSettings& line) const {
    model.changeInSystemSettings(line.mode);
    return true;
  }
  bool operator()(const sim::ChangeHardware& line) const {
    model.changeInHardware(line.mode());
    return true;
  }
  bool operator()(const sim::ChangePreference& line) const {
    const auto isStandard = line.value ? line.value->boolValue() : std::nullopt;
    if (line.value && !isStandard) return false;
    model.state.preference =
        isStandard ? std::optional{fnStateFromPreference(*isStandard)} : std::nullopt;
    return true;
  }
  /// What another process makes of the stored modes is not for the model to say.
  bool operator()(const sim::WriteDefaults& line) const {
    return line.key != settingsKey::globalFnState && line.key != settingsKey::localFnState;
  }
  bool operator()(const sim::AddOverride&) const { return false; }

  bool operator()(const sim::Press& line) const {
    if (isGlobalShortcut(line.keys)) model.clearOverride();
    if (isLocalShortcut(line.keys)) model.toggleOverride();
    return true;
  }
  /// What held keys do depends on what is held.
  bool operator()(const sim::HoldDown&) const { return false; }
  bool operator()(const sim::Release&) const { return false; }
  bool operator()(const sim::ChangeFlags&) const { return true; }
  bool operator()(const sim::AttachKeyboard&) const { return true; }
  bool operator()(const sim::Unplug&) const { return true; }
  bool operator()(const sim::SwitchCapsLock&) const { return true; }
  bool operator()(const sim::StampEvents&) const { return true; }
  bool operator()(const sim::DisableTap&) const { return true; }

  bool operator()(const sim::ClickItem& line) const {
    if (line.event == ClickEvent::leftMouseUp) {
      model.click();
    } else {
      model.openMenu();
    }
    return true;
  }
  bool operator()(const sim::ClickControl& line) const {
    if (line.title == generalLayout::quitTitle) model.quit();
    return true;
  }
  bool operator()(const sim::Choose& line) const {
    const auto setOverride = [this](FnState mode) {
      if (model.frontmost) model.setOverride(mode, *model.frontmost);
    };
    if (line.title == statusMenuTitle::globalToSpecial) model.setGlobal(FnState::special);
    if (line.title == statusMenuTitle::globalToStandard) model.setGlobal(FnState::standard);
    if (line.title == statusMenuTitle::localToSpecial) setOverride(FnState::special);
    if (line.title == statusMenuTitle::localToStandard) setOverride(FnState::standard);
    if (line.title == statusMenuTitle::quit) model.quit();
    return true;
  }
  bool operator()(const sim::CloseMenu&) const { return true; }
  bool operator()(const sim::CloseWindow&) const { return true; }
  bool operator()(const sim::SelectTab&) const { return true; }
  bool operator()(const sim::Answer&) const { return true; }

  bool operator()(const sim::Wait&) const { return true; }
  bool operator()(const sim::Sleep&) const {
    model.sleep();
    return true;
  }
  bool operator()(const sim::Wake&) const {
    model.wake();
    return true;
  }
  bool operator()(const sim::ChangePermission&) const { return true; }
  bool operator()(const sim::ForgetConsent&) const { return true; }
  bool operator()(const sim::AnswerConsent&) const { return true; }
  /// Which keys Keyrow gets to see, the session knows.
  bool operator()(const sim::SwitchSecureInput&) const { return true; }

  bool operator()(const sim::Launch&) const {
    // The older instance hears of it, and goes.
    if (model.isRunning) model.quit();
    model.launch();
    return true;
  }
  bool operator()(const sim::Reopen&) const { return true; }
  bool operator()(const sim::Quit&) const {
    model.quit();
    return true;
  }
  bool operator()(const sim::Kill&) const {
    model.kill();
    return true;
  }
  bool operator()(const sim::HangUp&) const { return false; }
  bool operator()(const sim::Resume&) const { return false; }
  /// Whom that is meant for, the session knows.
  bool operator()(const sim::PostTakeover&) const { return true; }

  bool operator()(const sim::Fail& line) const {
    if (!isKnownFault(line)) return false;
    const auto& fault = *std::ranges::find(knownFaults, line.call, &KnownFault::call);
    model.canRead = model.canRead && !fault.preventsReading;
    model.canWrite = model.canWrite && !fault.preventsWriting;
    return true;
  }
  bool operator()(const sim::Repair&) const {
    model.canRead = model.canWrite = true;
    return true;
  }

  bool operator()(const sim::SetMailService&) const { return true; }
  bool operator()(const sim::SwitchLoginItem&) const { return true; }
  bool operator()(const sim::RequireApproval&) const { return true; }
  bool operator()(const sim::AllowNotifications&) const { return true; }
  bool operator()(const sim::FindUpdate&) const { return true; }
  bool operator()(const sim::AttendUpdate&) const { return true; }
  bool operator()(const sim::FinishUpdate&) const { return true; }
  bool operator()(const sim::OpenNotification&) const { return true; }
  bool operator()(const sim::SetInfo&) const { return true; }
};

}  // namespace

bool isKnownFault(const sim::Fail& fail) {
  return fail.times == sim::Faults::always && fail.after == 0 &&
         std::ranges::find(knownFaults, fail.call, &KnownFault::call) != knownFaults.end();
}

bool happen(const sim::Action& action, ModeModel& model) {
  return std::visit(Meaning{model}, action);
}

bool isGlobalShortcut(const sim::Keys& keys) { return isFnWith(keys, escapeKeyCode); }

bool isLocalShortcut(const sim::Keys& keys) {
  return isFnWith(keys, defaultLocalToggleShortcut().keyCode);
}

}  // namespace keyrow::reliability
