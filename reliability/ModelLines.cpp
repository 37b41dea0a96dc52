#include "reliability/ModelLines.h"

#include <chrono>

#include "core/AppSettings.h"
#include "core/StoredFnStates.h"

namespace keyrow::reliability {

namespace {

constexpr Meaning nothing{};
constexpr Meaning noticed{.isNoticed = true};
constexpr Meaning applied{.isNoticed = true, .isApplied = true};

/// A line that is missing here does not compile.
struct Happening {
  ModeModel& model;

  Meaning operator()(const sim::Install&) const { return nothing; }
  Meaning operator()(const sim::Uninstall&) const { return nothing; }
  Meaning operator()(const sim::Front&) const { return applied; }
  Meaning operator()(const sim::ChangeInSystemSettings& line) const {
    model.chooseInSystemSettings(line.mode);
    return nothing;
  }
  Meaning operator()(const sim::ChangeHardware& line) const {
    if (line.mode()) model.meddle(line.mode());
    if (!line.mode() && model.isUnseen()) model.forget();
    return nothing;
  }
  Meaning operator()(const sim::ChangePreference& line) const {
    const auto isStandard = line.value ? line.value->boolValue() : std::nullopt;
    model.meddle(isStandard ? std::optional{fnStateFromPreference(*isStandard)} : std::nullopt);
    return nothing;
  }
  Meaning operator()(const sim::WriteDefaults& line) const {
    if (line.key == settingsKey::lastSeenFnStatePreference) model.loseTrack();
    if (line.key != settingsKey::globalFnState) return nothing;
    const auto mode = line.value ? storedFnState(*line.value) : std::nullopt;
    if (mode) {
      model.store(*mode);
    } else {
      model.forget();
    }
    return nothing;
  }
  Meaning operator()(const sim::ManageSetting&) const {
    model.loseTrack();
    return nothing;
  }
  Meaning operator()(const sim::AddOverride&) const { return nothing; }
  Meaning operator()(const sim::AttachKeyboard&) const { return nothing; }
  Meaning operator()(const sim::Unplug&) const { return nothing; }
  Meaning operator()(const sim::Press&) const { return nothing; }
  Meaning operator()(const sim::HoldDown&) const { return nothing; }
  Meaning operator()(const sim::Release&) const { return nothing; }
  Meaning operator()(const sim::ChangeFlags&) const { return nothing; }
  Meaning operator()(const sim::SwitchCapsLock&) const { return nothing; }
  Meaning operator()(const sim::DisableTap&) const { return nothing; }
  Meaning operator()(const sim::ClickItem&) const { return noticed; }
  Meaning operator()(const sim::UseVoiceOver&) const { return noticed; }
  Meaning operator()(const sim::ClickControl&) const { return nothing; }
  Meaning operator()(const sim::Choose&) const { return nothing; }
  Meaning operator()(const sim::ChooseFromMainMenu& line) const {
    return line.title == "Quit Keyrow" ? noticed : nothing;
  }
  Meaning operator()(const sim::CloseMenu&) const { return nothing; }
  Meaning operator()(const sim::CloseWindow&) const { return nothing; }
  Meaning operator()(const sim::SelectTab&) const { return nothing; }
  Meaning operator()(const sim::Answer&) const { return nothing; }
  Meaning operator()(const sim::Wait& line) const {
    if (line.duration >= std::chrono::seconds{1}) model.hear();
    return nothing;
  }
  Meaning operator()(const sim::Sleep&) const { return noticed; }
  Meaning operator()(const sim::Wake&) const { return applied; }
  Meaning operator()(const sim::SwitchUser&) const { return nothing; }
  Meaning operator()(const sim::ChangePermission&) const { return nothing; }
  Meaning operator()(const sim::Launch&) const { return applied; }
  Meaning operator()(const sim::Reopen&) const { return nothing; }
  Meaning operator()(const sim::Quit&) const { return nothing; }
  Meaning operator()(const sim::LogOut&) const { return nothing; }
  Meaning operator()(const sim::Kill&) const { return nothing; }
  Meaning operator()(const sim::HangUp&) const { return nothing; }
  Meaning operator()(const sim::Resume&) const { return nothing; }
  Meaning operator()(const sim::PostTakeover&) const { return nothing; }
  Meaning operator()(const sim::Fail&) const { return nothing; }
  Meaning operator()(const sim::Repair&) const { return nothing; }
  Meaning operator()(const sim::SetMailService&) const { return nothing; }
  Meaning operator()(const sim::SwitchLoginItem&) const { return nothing; }
  Meaning operator()(const sim::RequireApproval&) const { return nothing; }
  Meaning operator()(const sim::AllowNotifications&) const { return nothing; }
  Meaning operator()(const sim::FindUpdate&) const { return nothing; }
  Meaning operator()(const sim::AttendUpdate&) const { return nothing; }
  Meaning operator()(const sim::FinishUpdate&) const { return nothing; }
  Meaning operator()(const sim::OpenNotification&) const { return nothing; }
  Meaning operator()(const sim::SetInfo&) const { return nothing; }
  Meaning operator()(const sim::RunTool&) const { return nothing; }
  Meaning operator()(const sim::InterruptTool&) const { return nothing; }
  Meaning operator()(const sim::StampEvents&) const { return nothing; }
  Meaning operator()(const sim::ForgetConsent&) const { return nothing; }
  Meaning operator()(const sim::AnswerConsent&) const { return nothing; }
  Meaning operator()(const sim::SwitchSecureInput&) const { return nothing; }
};

}  // namespace

Meaning happen(const sim::Action& action, ModeModel& model) {
  return std::visit(Happening{model}, action);
}

}  // namespace keyrow::reliability
