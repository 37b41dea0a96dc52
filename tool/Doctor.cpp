#include "tool/Doctor.h"

#include <algorithm>

#include "core/LogText.h"
#include "core/Words.h"

namespace keyrow::tool {

namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view privacySettings = "System Settings > Privacy & Security";

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
  }
}

void lookAtSecureInput(const Surroundings& surroundings, Lines& lines) {
  if (!surroundings.isSecureInputOn) return;
  const auto who = surroundings.secureInputHolder ? inOneLine(*surroundings.secureInputHolder)
                                                  : std::string{"Some application"};
  lines.push_back(who +
                  " holds secure input, as where a password is typed: no shortcut works until it "
                  "lets go. Leave its password field, switch off its secure keyboard entry, or "
                  "quit it.");
}

void lookAtModes(const Status& status, Lines& lines) {
  if (!status.mode) {
    lines.emplace_back(
        "The keyboard's mode cannot be read. Switch to another application and "
        "back; if that does not help, restart the Mac.");
    return;
  }
  const auto found =
      status.application ? status.overrides.find(*status.application) : status.overrides.end();
  const bool hasOverride = found != status.overrides.end();
  const auto wanted = hasOverride ? std::optional{found->second} : status.global;
  if (wanted && status.mode != wanted) {
    lines.push_back("The keyboard is in the mode " + std::string{wordOf(*status.mode)} +
                    ", and should be in the mode " + std::string{wordOf(*wanted)} +
                    ". Switch to another application and back.");
  }
  if (hasOverride) {
    lines.push_back(inOneLine(found->first) + " has an override: there the mode is " +
                    std::string{wordOf(found->second)} + ". keyrow override clear " +
                    inOneLine(found->first) + " takes it away.");
  }
}

void lookAtKeyboards(const Status& status, Lines& lines) {
  bool isForeignConnected = false;
  for (const auto& keyboard :
       status.running ? status.running->keyboards : std::vector<Status::Keyboard>{}) {
    isForeignConnected |= keyboard.isTranslatable;
    const auto mode = ownMode(status, keyboard);
    if (!mode || !status.translatesTopRows) continue;
    lines.push_back(inOneLine(keyboard.name) + " (" + *keyboard.numbers +
                    ") has a mode of its own: " + std::string{wordOf(*mode)} +
                    ". keyrow keyboard set " + *keyboard.numbers +
                    " follow lets it follow the others.");
  }
  if (status.translatesTopRows || (!isForeignConnected && status.keyboardModes.empty())) return;
  lines.emplace_back(
      "The top row of keyboards that are not Apple's stays F1 to F12. "
      "keyrow settings applyFnModeToExternalFunctionKeys on lets it follow the mode.");
}

}  // namespace

Lines diagnose(const Status& status, const Surroundings& surroundings, const Findings& findings) {
  Lines lines;
  if (!findings.isRunning) {
    lines.emplace_back("Keyrow does not run, so nothing keeps the mode. Open it.");
  } else if (!status.running) {
    lines.emplace_back(
        "Keyrow runs, and does not answer. Quit it, by force if it has to be, and "
        "open it again.");
  } else {
    lookAtKeyrow(*status.running, lines);
  }
  lookAtSecureInput(surroundings, lines);
  for (const auto& key : findings.managedKeys) {
    lines.push_back(key + " is managed by an administrator: ask them to change it.");
  }
  // Another user's keyboard is in that user's mode.
  if (!status.running || status.running->isSessionActive) lookAtModes(status, lines);
  lookAtKeyboards(status, lines);
  if (lines.empty()) lines.emplace_back("Nothing is wrong that Keyrow could see.");
  return lines;
}

}  // namespace keyrow::tool
