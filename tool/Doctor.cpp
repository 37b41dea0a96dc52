#include "tool/Doctor.h"

#include <algorithm>

#include "core/AppSettings.h"
#include "core/Words.h"

namespace keyrow::tool {

namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view privacySettings = "System Settings > Privacy & Security";
constexpr std::string_view comeBack = " Switch to another application and back.";

void lookForOthers(const Status::Running& running, const std::vector<std::int64_t>& processes,
                   Lines& lines) {
  for (const auto process : processes) {
    if (process == running.processIdentifier) continue;
    lines.push_back("Another Keyrow runs, and does nothing any more. Force it to quit: kill -9 " +
                    std::to_string(process));
  }
}

void lookAtKeyrow(const Status::Running& running, Lines& lines) {
  if (!running.isSessionActive) {
    lines.emplace_back("Another user has the keyboard. Keyrow goes on when this session is back.");
    return;
  }
  if (!running.isTrusted) {
    lines.push_back(
        "Keyrow lacks the Accessibility permission, so no shortcut works. Allow it in " +
        std::string{privacySettings} + " > Accessibility.");
  } else if (!running.hasEventTap) {
    lines.emplace_back(
        "macOS gives Keyrow no keys. Quit Keyrow and open it again; if that does not help, remove "
        "it from Accessibility and from Input Monitoring, and add it again.");
  }
  if (running.inputMonitoring != InputMonitoringAccess::granted) {
    lines.push_back(
        "Keyrow lacks the Input Monitoring permission, so it cannot tell keyboards apart, and "
        "translates no top row. Allow it in " +
        std::string{privacySettings} + " > Input Monitoring.");
  } else if (!running.seesKeyboards) {
    lines.emplace_back(
        "macOS lets Keyrow see no keyboards, so it cannot tell them apart, and translates no top "
        "row. Quit Keyrow and open it again.");
  } else if (running.isKeyboardSeized) {
    lines.emplace_back(
        "When Keyrow began to listen, another program had a keyboard to itself, so its top row is "
        "not translated. Have that program let go of it, then quit Keyrow and open it again.");
  }
}

void lookAtSecureInput(const Surroundings& surroundings, Lines& lines) {
  if (!surroundings.isSecureInputOn) return;
  const auto who = surroundings.secureInputHolder ? *surroundings.secureInputHolder
                                                  : std::string{"Some application"};
  lines.push_back(who +
                  " holds secure input, as where a password is typed: no shortcut works until it "
                  "lets go. Leave its password field, switch off its secure keyboard entry, or "
                  "quit it.");
}

bool isManaged(const Findings& findings, std::string_view key) {
  return std::ranges::find(findings.managedKeys, key) != findings.managedKeys.end();
}

void lookAtModes(const Status& status, const Findings& findings, Lines& lines) {
  if (!status.mode) {
    lines.emplace_back(
        "The keyboard's mode cannot be read. Switch to another application and "
        "back; if that does not help, restart the Mac.");
    return;
  }
  if (!status.running) return;
  const auto found =
      status.application ? status.overrides.find(*status.application) : status.overrides.end();
  if (found == status.overrides.end()) {
    if (status.global && status.mode != status.global) {
      lines.push_back("The keyboard is in the mode " + std::string{wordOf(*status.mode)} +
                      ", which is not the one that Keyrow chose." + std::string{comeBack});
    }
    return;
  }
  const auto& [application, mode] = *found;
  if (status.mode != mode) {
    lines.push_back(application + " has an override, " + std::string{wordOf(mode)} +
                    ", which is not in force." + std::string{comeBack});
    return;
  }
  lines.push_back(application + " has an override: there the mode is " + std::string{wordOf(mode)} +
                  "." +
                  (isManaged(findings, settingsKey::localFnState)
                       ? ""
                       : " keyrow override clear " + application + " takes it away."));
}

void lookAtKeyboards(const Status& status, const Findings& findings, Lines& lines) {
  bool isForeignConnected = false;
  for (const auto& keyboard :
       status.running ? status.running->keyboards : std::vector<Status::Keyboard>{}) {
    isForeignConnected |= keyboard.isTranslatable;
    const auto mode = ownMode(status, keyboard);
    if (!mode || !status.translatesTopRows) continue;
    addOnce(lines, keyboard.name + " (" + *keyboard.numbers +
                       ") has a mode of its own: " + std::string{wordOf(*mode)} + "." +
                       (isManaged(findings, settingsKey::keyboardFnStates)
                            ? ""
                            : " keyrow keyboard set " + *keyboard.numbers +
                                  " follow lets it follow the others."));
  }
  if (status.translatesTopRows || (!isForeignConnected && status.keyboardModes.empty())) return;
  const std::string key{rowOf(BooleanSetting::applyFnModeToExternalFunctionKeys).key};
  lines.push_back(
      "The top row of keyboards that are not Apple's stays F1 to F12." +
      (isManaged(findings, key) ? "" : " keyrow settings " + key + " on lets it follow the mode."));
}

}  // namespace

Lines diagnose(const Status& status, const Surroundings& surroundings, const Findings& findings) {
  Lines lines;
  if (findings.processes.empty()) {
    lines.emplace_back("Keyrow does not run, so nothing keeps the mode. Open it.");
  } else if (!status.running) {
    lines.emplace_back(
        "Keyrow runs, and does not answer. Quit it, by force if it has to be, and "
        "open it again.");
  } else {
    lookForOthers(*status.running, findings.processes, lines);
    lookAtKeyrow(*status.running, lines);
  }
  lookAtSecureInput(surroundings, lines);
  for (const auto& key : findings.managedKeys) {
    lines.push_back(key + " is managed by an administrator: ask them to change it.");
  }
  // Another user's keyboard is in that user's mode.
  if (!status.running || status.running->isSessionActive) lookAtModes(status, findings, lines);
  lookAtKeyboards(status, findings, lines);
  if (lines.empty()) lines.emplace_back("Nothing is wrong that Keyrow could see.");
  return lines;
}

}  // namespace keyrow::tool
