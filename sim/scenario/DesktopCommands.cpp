#include <array>

#include "core/AppIdentifier.h"
#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

using StatusItemAction = std::function<Outcome(SimulatedStatusItemView&)>;

/// Something the user does with the running Keyrow's item in the menu bar.
Play atStatusItem(StatusItemAction action) {
  return [action = std::move(action)](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    return action(process->statusItem());
  };
}

Play parseClick(LineReader& line) {
  const auto event = line.accept("right") ? ClickEvent::rightMouseDown : ClickEvent::leftMouseUp;
  return atStatusItem([event](SimulatedStatusItemView& item) {
    item.click(event);
    return Outcome{};
  });
}

Play parseChoose(LineReader& line) {
  return atStatusItem([title = line.quotedText("the title of a menu item in quotation marks")](
                          SimulatedStatusItemView& item) {
    if (!item.menu()) return unplayable("no menu is open");
    return item.choose(title) ? Outcome{} : unplayable("the menu does not offer " + title);
  });
}

Play parseClose(LineReader& line) {
  constexpr std::array<std::string_view, 2> things{"menu", "window"};
  const bool isMenu = line.oneOf(things) == 0;
  return [isMenu](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    if (isMenu) {
      process->statusItem().closeMenu();
    } else {
      process->settingsWindow().close();
    }
    return Outcome{};
  };
}

Play parseTab(LineReader& line) {
  std::array<std::string_view, settingsTabs.size()> titles;
  for (std::size_t index = 0; index < titles.size(); ++index)
    titles[index] = settingsTabs[index].title;
  return [title = std::string{titles[line.oneOf(titles)]}](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    if (!process->settingsWindow().isVisible()) return unplayable("the settings window is closed");
    process->settingsWindow().selectTab(title);
    return Outcome{};
  };
}

Play parseAnswer(LineReader& line) {
  return [button = line.quotedText("the title of a button in quotation marks")](Stage& stage) {
    stage.mac.screen.answerNextAlert(button);
    return Outcome{};
  };
}

Play permission(LineReader& line, bool granted) {
  constexpr std::array<std::string_view, 2> permissions{"accessibility", "input-monitoring"};
  const bool isAccessibility = line.oneOf(permissions) == 0;
  return [isAccessibility, granted](Stage& stage) {
    auto& mac = stage.mac;
    (isAccessibility ? mac.isAccessibilityGranted : mac.isInputMonitoringGranted) = granted;
    return Outcome{};
  };
}

Play parseGrant(LineReader& line) { return permission(line, true); }

Play parseRevoke(LineReader& line) { return permission(line, false); }

Play parseSleep(LineReader&) {
  return [](Stage& stage) {
    if (stage.mac.power.isAsleep()) return unplayable("the Mac sleeps already");
    stage.mac.power.sleep();
    return Outcome{};
  };
}

Play parseWake(LineReader&) {
  return [](Stage& stage) {
    if (!stage.mac.power.isAsleep()) return unplayable("the Mac is awake");
    stage.mac.power.wake();
    return Outcome{};
  };
}

Play parseCapsLock(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"on", "off"};
  return [isOn = line.oneOf(words) == 0](Stage& stage) {
    stage.mac.isCapsLockOn = isOn;
    return Outcome{};
  };
}

Play parsePostTakeover(LineReader& line) {
  auto userInfo = line.atEnd() ? PropertyValue{PropertyDictionary{}} : line.value();
  if (!userInfo.dictionary()) line.failBefore("key=value ...");
  return [userInfo = *userInfo.dictionary()](Stage& stage) {
    stage.mac.distributedNotifications.post(
        {std::string{appIdentifier} + ".instanceTakeover", std::string{appIdentifier},
         userInfo.empty() ? std::nullopt : std::optional{userInfo}});
    return Outcome{};
  };
}

constexpr std::array<Command, 11> commands{{
    {"click", "click [right]",
     "The user clicks Keyrow's item in the menu bar; a right click opens its menu.", "click right",
     parseClick},
    {"choose", "choose \"TITLE\"", "The user chooses from the open menu.", "choose \"Settings…\"",
     parseChoose},
    {"close", "close menu|window", "The user closes the menu or the settings window.",
     "close window", parseClose},
    {"tab", "tab General|About", "The user selects a tab of the settings window.", "tab About",
     parseTab},
    {"answer", "answer \"BUTTON\"",
     "What the user will press in the next alert; without this, its last button.",
     "answer \"Open Accessibility Settings\"", parseAnswer},
    {"grant", "grant accessibility|input-monitoring",
     "The user allows Keyrow to control the computer, or to monitor its keys.",
     "grant accessibility", parseGrant},
    {"revoke", "revoke accessibility|input-monitoring", "The user takes a permission back.",
     "revoke accessibility", parseRevoke},
    {"sleep", "sleep", "The Mac falls asleep.", "sleep", parseSleep},
    {"wake", "wake", "The Mac wakes up.", "wake", parseWake},
    {"caps-lock", "caps-lock on|off", "Caps Lock is switched on or off.", "caps-lock on",
     parseCapsLock},
    {"post takeover", "post takeover [KEY=VALUE ...]",
     "Some process posts the notification by which a new instance of Keyrow tells an older one to "
     "go, with this user info.",
     "post takeover targetPID=501", parsePostTakeover},
}};

}  // namespace

std::span<const Command> desktopCommands() { return commands; }

}  // namespace keyrow::sim
