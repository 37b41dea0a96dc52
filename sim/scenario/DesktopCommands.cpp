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

/// A click on a control of the pane that is to be seen.
Play clickControl(std::string title) {
  return [title = std::move(title)](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    auto& platform = process->simulatedPlatform();
    if (!platform.settingsWindow.isVisible()) return unplayable("the settings window is closed");
    const bool isGeneral = platform.settingsWindow.selectedTab().title == settingsTabs[0].title;
    const bool isClicked = isGeneral ? platform.general.click(title) : platform.about.click(title);
    return isClicked ? Outcome{} : unplayable("nothing here can be clicked that says " + title);
  };
}

Play parseClick(LineReader& line) {
  const bool isRight = line.accept("right");
  if (!isRight && !line.atEnd()) {
    return clickControl(line.quotedText("right, or the title of a control in quotation marks"));
  }
  const auto event = isRight ? ClickEvent::rightMouseDown : ClickEvent::leftMouseUp;
  return atStatusItem([event](SimulatedStatusItemView& item) {
    item.click(event);
    return Outcome{};
  });
}

Play parseChoose(LineReader& line) {
  return [title = line.quotedText("the title of an item in quotation marks")](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    auto& platform = process->simulatedPlatform();
    if (platform.statusItem.menu()) {
      return platform.statusItem.choose(title) ? Outcome{}
                                               : unplayable("the menu does not offer " + title);
    }
    if (!platform.settingsWindow.isVisible()) return unplayable("no menu is open");
    return platform.general.chooseFnReplacement(title)
               ? Outcome{}
               : unplayable("the pop-up does not offer " + title);
  };
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
  const bool isOn = line.oneOf(words) == 0;
  const auto keyboard = line.accept("on") ? line.word("the name of a keyboard") : std::string{};
  return [isOn, keyboard](Stage& stage) {
    if (!keyboard.empty() && !stage.mac.keyboards.find(keyboard)) {
      return unplayable("no keyboard " + keyboard + " is attached");
    }
    stage.mac.setCapsLock(isOn, keyboard);
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
    {"click", "click [right|\"TITLE\"]",
     "The user clicks Keyrow's item in the menu bar, where a right click opens its menu, or a "
     "control in the settings window.",
     "click right", parseClick},
    {"choose", "choose \"TITLE\"",
     "The user chooses from the open menu, or from the pop-up in the settings window.",
     "choose \"Settings…\"", parseChoose},
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
    {"caps-lock", "caps-lock on|off [on NAME]",
     "Caps Lock is switched on or off; the keyboard, where one is named, reports it.",
     "caps-lock on on usb1", parseCapsLock},
    {"post takeover", "post takeover [KEY=VALUE ...]",
     "Some process posts the notification by which a new instance of Keyrow tells an older one to "
     "go, with this user info.",
     "post takeover targetPID=501", parsePostTakeover},
}};

}  // namespace

std::span<const Command> desktopCommands() { return commands; }

}  // namespace keyrow::sim
