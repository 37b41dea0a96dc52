#pragma once

#include <functional>
#include <variant>

#include "sim/scenario/AppLines.h"
#include "sim/scenario/FaultLines.h"
#include "sim/scenario/KeyLines.h"
#include "sim/scenario/MachineLines.h"
#include "sim/scenario/ModeLines.h"
#include "sim/scenario/ProcessLines.h"
#include "sim/scenario/ScreenLines.h"
#include "sim/scenario/ServiceLines.h"
#include "sim/scenario/ToolLines.h"

namespace keyrow::sim {

/// What a line does, with its arguments. Whoever wants to know what a line was asks this;
/// `std::visit` makes sure that no kind of line is forgotten.
using Action =
    std::variant<Install, Uninstall, Front, ChangeInSystemSettings, ChangeHardware,
                 ChangePreference, WriteDefaults, ManageSetting, AddOverride, AttachKeyboard,
                 Unplug, Press, HoldDown, Release, ChangeFlags, SwitchCapsLock, StampEvents,
                 DisableTap, ClickItem, UseVoiceOver, ClickControl, Choose, ChooseFromMainMenu,
                 CloseMenu, CloseWindow, SelectTab, Answer, Wait, Sleep, Wake, SwitchUser,
                 ChangePermission, ForgetConsent, AnswerConsent, SwitchSecureInput, Launch, Reopen,
                 Quit, LogOut, Kill, HangUp, Resume, PostTakeover, Fail, Repair, SetMailService,
                 SwitchLoginItem, RequireApproval, AllowNotifications, FindUpdate, AttendUpdate,
                 FinishUpdate, OpenNotification, SetInfo, RunTool, InterruptTool>;

/// Asks whether something holds, or has happened since the last line that is no expectation.
using Check = std::function<Outcome(Stage&)>;

}  // namespace keyrow::sim
