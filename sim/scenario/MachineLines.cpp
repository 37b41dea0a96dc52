#include "sim/scenario/MachineLines.h"

#include <array>

#include "sim/scenario/Language.h"

namespace keyrow::sim {

Outcome Wait::play(Stage& stage) const {
  using namespace std::chrono_literals;
  constexpr auto longestUptime = 24h * 36525;
  if (stage.mac.scheduler.now() + duration > longestUptime) {
    return unplayable("the machine cannot stay on for more than a hundred years");
  }
  stage.mac.scheduler.advance(duration);
  return {};
}

Outcome Sleep::play(Stage& stage) const {
  if (stage.mac.power.isAsleep()) return unplayable("the Mac sleeps already");
  stage.mac.power.sleep();
  return {};
}

Outcome Wake::play(Stage& stage) const {
  if (!stage.mac.power.isAsleep()) return unplayable("the Mac is awake");
  stage.mac.power.wake();
  return {};
}

Outcome SwitchUser::play(Stage& stage) const {
  if (user == stage.mac.sessions.active()) return unplayable(user + " is there already");
  stage.mac.sessions.switchTo(user, isNewToldFirst);
  return {};
}

Outcome ChangePermission::play(Stage& stage) const {
  if (which == Which::accessibility) {
    stage.mac.changeAccessibility(isGranted, lateness, isAnnounced);
  } else {
    stage.mac.inputMonitoring.set(isGranted ? InputMonitoringAccess::granted
                                            : InputMonitoringAccess::denied);
  }
  return {};
}

Outcome ForgetConsent::play(Stage& stage) const {
  stage.mac.inputMonitoring.set(InputMonitoringAccess::unknown);
  return {};
}

Outcome AnswerConsent::play(Stage& stage) const {
  auto& consent = stage.mac.inputMonitoring;
  if (!consent.isAsking()) return unplayable("nobody asks for Input Monitoring");
  consent.answer(isAllowed ? InputMonitoringAccess::granted : InputMonitoringAccess::denied);
  return {};
}

Outcome SwitchSecureInput::play(Stage& stage) const {
  stage.mac.setSecureInput(isOn, holder);
  return {};
}

namespace {

Action parseWait(LineReader& line) { return Wait{line.duration()}; }

Action parseSleep(LineReader&) { return Sleep{}; }

Action parseWake(LineReader&) { return Wake{}; }

Action parseUser(LineReader& line) {
  SwitchUser user{.user = line.word("a name")};
  if (!line.atEnd()) {
    line.require("told");
    line.require("first");
    user.isNewToldFirst = true;
  }
  return user;
}

Action permission(LineReader& line, bool isGranted) {
  constexpr std::array<std::string_view, 2> permissions{"accessibility", "input-monitoring"};
  /// How long trust goes on to be told as it was, where a line says nothing of it.
  constexpr std::chrono::milliseconds usualLateness{100};
  ChangePermission change{.which = static_cast<ChangePermission::Which>(line.oneOf(permissions)),
                          .isGranted = isGranted,
                          .lateness = usualLateness};
  if (change.which != ChangePermission::Which::accessibility) return change;
  if (line.accept("late")) change.lateness = line.duration();
  if (line.accept("untold")) change.lateness.reset();
  if (line.accept("unannounced")) change.isAnnounced = false;
  return change;
}

Action parseGrant(LineReader& line) { return permission(line, true); }

Action parseRevoke(LineReader& line) { return permission(line, false); }

Action parseReset(LineReader& line) {
  line.require("input-monitoring");
  return ForgetConsent{};
}

Action parseAllow(LineReader& line) {
  line.require("input-monitoring");
  return AnswerConsent{.isAllowed = true};
}

Action parseDeny(LineReader& line) {
  line.require("input-monitoring");
  return AnswerConsent{.isAllowed = false};
}

Action parseSecureInput(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"on", "off"};
  SwitchSecureInput secureInput{.isOn = line.oneOf(words) == 0};
  if (secureInput.isOn && line.accept("by")) secureInput.holder = line.bundleIdentifier();
  return secureInput;
}

constexpr std::array<ActionWord, 10> actions{{
    {"wait", "wait DURATION", "Time passes.", "wait 0.35s", parseWait},
    {"sleep", "sleep", "The Mac falls asleep.", "sleep", parseSleep},
    {"wake", "wake",
     "The Mac wakes up, a minute later by its clocks, save the one of its key events.", "wake",
     parseWake},
    {"user", "user NAME [told first]",
     "Another user's session comes to the front by fast user switching; that of the first user is "
     "called me. Settings, applications in front and Keyrow are each user's own. Keyrow in the old "
     "session is told before the one in the new session, or after it.",
     "user anna", parseUser},
    {"grant", "grant accessibility [late DURATION|untold] [unannounced] | grant input-monitoring",
     "The user allows Keyrow to control the computer, or to monitor its keys, as it is in the "
     "beginning. A Keyrow that runs is told of Accessibility 100 ms later, or that late, or never; "
     "and a notification announces it, or does not.",
     "grant accessibility late 3s", parseGrant},
    {"revoke",
     "revoke accessibility [late DURATION|untold] [unannounced] | revoke input-monitoring",
     "The user takes a permission back. Until it is gone, the event tap of a Keyrow without "
     "Accessibility stalls every key.",
     "revoke accessibility untold", parseRevoke},
    {"reset", "reset input-monitoring",
     "macOS forgets what the user has said about it, as tccutil does: whoever asks, or opens a HID "
     "manager, waits for a dialog then.",
     "reset input-monitoring", parseReset},
    {"allow", "allow input-monitoring", "The user answers that dialog, and allows it.",
     "allow input-monitoring", parseAllow},
    {"deny", "deny input-monitoring", "The user answers that dialog, and does not allow it.",
     "deny input-monitoring", parseDeny},
    {"secure-input", "secure-input on [by APP]|off",
     "An application takes the keyboard for itself, as where a password is typed, or gives it "
     "back: in between its keys pass every event tap unseen. macOS may tell who it is.",
     "secure-input on", parseSecureInput},
}};

}  // namespace

LanguagePart machineLines() { return {actions, {}}; }

}  // namespace keyrow::sim
