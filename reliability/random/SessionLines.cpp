#include "reliability/random/SessionLines.h"

#include <rapidcheck.h>

#include <array>
#include <ostream>
#include <sstream>
#include <string_view>

#include "reliability/Session.h"
#include "sim/machine/PortCall.h"

namespace keyrow::reliability {

namespace {

constexpr std::string_view foreignKeyboard =
    "keyboard usb vendor=0x046d product-id=0xc33f product=\"G Pro\" transport=USB built-in=false";

/// How every session begins.
constexpr std::array<std::string_view, 5> beginning{
    "install com.example.one", "install com.example.two",
    "keyboard internal built-in=true transport=SPI", foreignKeyboard, "launch keyrow"};

constexpr std::string_view pressUnderOwnMode =
    "defaults write applyFnModeToExternalFunctionKeys true\n"
    "defaults write keyboardFnStates 046d:c33f=1\nwait 1ms\npress f8 on usb";

// Its press is seen, then one that is not.
constexpr std::string_view holdUnseen =
    "defaults write applyFnModeToExternalFunctionKeys true\npress f12 on usb\nsecure-input on\n"
    "hold f12 on usb\nsecure-input off\nrelease f12 on usb";

constexpr std::string_view holdAcrossGap =
    "defaults write applyFnModeToExternalFunctionKeys true\nhold f12 on usb\n"
    "disable tap silently\nwait 0.7s\nrun keyrow status\nrelease f12 on usb";

constexpr std::string_view holdOnTwoKeyboards =
    "keyboard other vendor=0x1234 product-id=1 transport=USB built-in=false\n"
    "defaults write applyFnModeToExternalFunctionKeys true\n"
    "defaults write keyboardFnStates 046d:c33f=0 1234:0001=1\n"
    "hold f12 on other\nwait 0.35s\nhold f12 on usb\nwait 0.35s\nrelease f12 on usb\n"
    "release f12 on other";

using Text = rc::Gen<std::string>;

Text oneOf(std::vector<std::string> texts) { return rc::gen::elementOf(std::move(texts)); }

Text before(Text text, std::string what) {
  return rc::gen::map(std::move(text),
                      [what = std::move(what)](const std::string& end) { return what + end; });
}

Text behind(Text text, std::string what) {
  return rc::gen::map(std::move(text),
                      [what = std::move(what)](const std::string& start) { return start + what; });
}

Text app() {
  return oneOf({"com.apple.finder", "com.apple.SystemSettings", "com.apple.systempreferences",
                "com.example.one", "com.example.two"});
}

Text mode() { return oneOf({"special", "standard"}); }

Text keyboard() { return oneOf({"internal", "usb", "keypad", "ghost", "seized", "none"}); }

Text portCall() {
  std::vector<std::string> names;
  names.reserve(sim::portCalls.size());
  for (const auto& call : sim::portCalls) names.emplace_back(call.name);
  return oneOf(std::move(names));
}

/// Something that the user does, or that the system does to Keyrow.
Text userLine() {
  return rc::gen::weightedOneOf<std::string>(
      {{8, before(app(), "front ")},
       {1, oneOf({"front none", "front unnamed"})},
       {4, oneOf({"press fn+` on internal", "press fn+escape on internal", "click"})},
       {1, oneOf({"voice-over press", "click control\nchoose \"Use F1-F12 by Default\"",
                  "voice-over show-menu\nclose menu"})},
       {5, oneOf({"click right\nchoose \"Use F1-F12 by Default\"",
                  "click right\nchoose \"Use Media & System Controls by Default\"",
                  "click right\nchoose \"Use F1-F12 in This App Only\"",
                  "click right\nchoose \"Use Media & System Controls in This App Only\""})},
       {4, rc::gen::map(
               rc::gen::pair(oneOf({"fn+escape", "fn+`", "escape", "f1", "f5", "f12",
                                    "left-control+escape", "a", "t", "f3", "fn+f5"}),
                             keyboard()),
               [](const auto& pair) { return "press " + pair.first + " on " + pair.second; })},
       {1, rc::gen::map(rc::gen::tuple(oneOf({"hold ", "release "}),
                                       oneOf({"fn+`", "fn+escape", "fn", "`", "f12", "f8", "f3",
                                              "f5", "a", "left-arrow", "home", "left-control"}),
                                       keyboard()),
                        [](const auto& line) {
                          return std::get<0>(line) + std::get<1>(line) + " on " + std::get<2>(line);
                        })},
       {1,
        oneOf({"defaults write applyFnModeToExternalFunctionKeys true\nhold f12 on usb\nwait 0.6s",
               "hold f11 on usb\nfront com.example.one\nrelease f11 on usb",
               "hold f10 on usb\nclick\nrelease f10 on usb",
               "hold f9 on usb\ndisable tap user-input\nrelease f9 on usb",
               "hold fn on usb\nhold ` on usb\nrelease fn on usb\nrelease ` on usb",
               std::string{pressUnderOwnMode}, std::string{holdUnseen}, std::string{holdAcrossGap},
               std::string{holdOnTwoKeyboards}, "release f12 on usb", "release ` on internal"})},
       {2, before(mode(), "system-settings ")},
       {1, before(mode(), "hardware ")},
       {1, oneOf({"hardware HIDFKeyMode=2", "hardware HIDParameters=none"})},
       {1, before(app(), "uninstall ")},
       {2, before(app(), "install ")},
       {1, oneOf({"keyboard internal built-in=true transport=SPI", std::string{foreignKeyboard},
                  "keyboard keypad usage=7 transport=USB caps-lock=false",
                  "keyboard ghost registry=none transport=USB",
                  "keyboard seized transport=USB exclusive=true", "unplug internal", "unplug usb",
                  "unplug keypad", "unplug ghost", "unplug seized"})},
       {3, oneOf({"wait 1ms", "wait 120ms", "wait 0.35s", "wait 0.7s", "wait 2s", "wait 8s",
                  "wait 30s", "wait 10min"})},
       {3, oneOf({"launch keyrow", "quit keyrow", "kill keyrow", "reopen keyrow"})},
       {1, oneOf({"quit keyrow 501", "kill keyrow 502", "flags-changed F5 with fn",
                  "press F5 on usb late 5ms"})},
       {5, oneOf({"click",
                  "click right",
                  "close menu",
                  "choose \"Use F1-F12 by Default\"",
                  "choose \"Use Media & System Controls by Default\"",
                  "choose \"Use F1-F12 in This App Only\"",
                  "choose \"Use Media & System Controls in This App Only\"",
                  "choose \"Settings…\"",
                  "choose \"Quit\"",
                  "close window",
                  "tab About",
                  "tab General",
                  "click \"Quit\"",
                  "click \"Launch at login\"",
                  "click \"Show Caps Lock indicator\"",
                  "click \"Report a Bug\"",
                  "click \"Check for Updates\"",
                  "click \"Accessibility Permission\"",
                  "click \"Apply Fn function to non-Apple vendor external F keys\"",
                  "click \"Include enhanced diagnostics in logs\""})},
       {2, oneOf({"reopen keyrow\ntab General\nclick \"Show Caps Lock indicator\"",
                  "reopen keyrow\ntab About\nclick \"Include enhanced diagnostics in logs\"",
                  "reopen keyrow\ntab General\nclick \"Fn + `\"\npress t on internal",
                  "reopen keyrow\ntab General\nclick \"Fn + `\"\nclose window",
                  "reopen keyrow\ntab General\nclick \"Fn + T\"\nfront com.example.one",
                  "reopen keyrow\ntab General\nclick \"Fn + `\"\npress escape on internal",
                  "defaults write showCapsLockIndicator true",
                  "defaults delete showCapsLockIndicator",
                  "defaults write applyFnModeToExternalFunctionKeys true",
                  "defaults write enhancedDiagnosticsEnabled true",
                  "defaults write enhancedDiagnosticsEnabled false",
                  "defaults write fnReplacementModifier \"leftControl\"",
                  "defaults write keyboardFnStates 046d:c33f=0",
                  "defaults write keyboardFnStates 046d:c33f=1",
                  "defaults write keyboardFnStates 046D:C33F=1 1:1=0",
                  "defaults delete keyboardFnStates",
                  "defaults write localToggleShortcutKeyCode 17",
                  "click \"Fn + `\"",
                  "click \"Fn + T\"",
                  "click \"Reset\"",
                  "choose \"Right Option\"",
                  "choose \"Off\""})},
       {1, oneOf({"preference true", "preference false", "preference none",
                  "defaults write globalFnState 1", "defaults delete globalFnState",
                  "defaults write localFnState com.example.one=0",
                  "defaults add localFnState com.example.two=standard",
                  "defaults write localFnState \"odd\""})},
       {1,
        oneOf({"answer \"Open Accessibility Settings\"", "answer \"OK\"", "login-item on",
               "login-item needs-approval", "mail missing", "mail works", "notifications refused",
               "notifications allowed", "update found 1.1", "update found 1.1 in-focus",
               "update attended", "update finished", "open notification", "info SUFeedURL none"})},
       {2, oneOf({"run keyrow mode special", "run keyrow mode standard", "run keyrow mode toggle",
                  "run keyrow mode", "run keyrow status", "run keyrow doctor",
                  "run keyrow override set com.example.one standard",
                  "run keyrow override set com.example.two special",
                  "run keyrow override clear com.example.one",
                  "run keyrow keyboard set 046d:c33f standard",
                  "run keyrow keyboard set \"G Pro\" special",
                  "run keyrow keyboard set 046d:c33f follow",
                  "run keyrow settings applyFnModeToExternalFunctionKeys on",
                  "run keyrow settings shortcut T", "run keyrow settings shortcut default"})},
       {1, oneOf({"quit keyrow\nsystem-settings special\nrun keyrow mode toggle\nlaunch keyrow",
                  "quit keyrow\nsystem-settings standard\nrun keyrow mode special\nlaunch keyrow",
                  "run keyrow mode toggle &", "run keyrow watch --json", "interrupt keyrow"})},
       {3, oneOf({"sleep", "wake"})},
       {1, oneOf({"user anna", "user me", "user anna told first", "user me told first",
                  "user anna\nlaunch keyrow", "log out"})},
       {1, oneOf({"managed globalFnState 1", "managed localFnState none",
                  "managed globalFnState none"})},
       {2, oneOf({"grant accessibility", "revoke accessibility", "grant input-monitoring",
                  "revoke input-monitoring"})},
       {2, oneOf({"reset input-monitoring", "allow input-monitoring", "deny input-monitoring"})},
       {1, oneOf({"secure-input on", "secure-input off", "timestamps nanoseconds",
                  "timestamps ticks"})},
       {2, oneOf({"grant accessibility late 3s", "grant accessibility unannounced",
                  "grant accessibility untold", "revoke accessibility late 3s",
                  "revoke accessibility unannounced", "revoke accessibility untold",
                  "revoke accessibility late 3s\npress a on usb\nwait 2s\npress fn+` on usb",
                  "disable tap timeout\ndisable tap timeout", "fail create-event-tap 3 times"})},
       {1, oneOf({"caps-lock on", "caps-lock off on internal", "caps-lock on on usb"})},
       {1, oneOf({"disable tap timeout", "disable tap user-input", "disable tap silently"})},
       {1, oneOf({"post takeover targetPID=501", "post takeover targetPID=502",
                  "post takeover targetPID=\"501\"", "post takeover"})}});
}

/// Something goes wrong with the keyboard, or is mended.
Text knownFault() {
  return rc::gen::weightedOneOf<std::string>(
      {{1, oneOf({"fail find-service always", "fail read-service-property always",
                  "fail open-connection always", "fail set-hid-parameter always"})},
       {2, rc::gen::just(std::string{"repair"})}});
}

/// Something else that goes wrong.
Text otherFault() {
  return rc::gen::weightedOneOf<std::string>(
      {{4, before(portCall(), "fail ")},
       {2, behind(before(portCall(), "fail "), " always")},
       {1, behind(before(portCall(), "fail "), " 2 times")},
       {1, behind(before(portCall(), "fail "), " after 1")},
       {1, behind(before(portCall(), "fail "), " 2 times after 2")},
       {4, rc::gen::just(std::string{"repair"})},
       {1, rc::gen::just(std::string{foreignKeyboard} +
                         "\nfail read-device-property 7 times\npress a on usb\n" +
                         std::string{pressUnderOwnMode})},
       {1, oneOf({"hang keyrow", "hang keyrow unreachable", "hang keyrow unstoppable"})},
       {1, rc::gen::just(std::string{"hang keyrow 501"})},
       {2, oneOf({"resume keyrow", "resume keyrow 501"})}});
}

rc::Gen<SessionLines> session() {
  // In half of the sessions only the keyboard fails, so that what was chosen is promised.
  return rc::gen::mapcat(rc::gen::arbitrary<bool>(), [](bool isPromising) {
    auto line = rc::gen::weightedOneOf<std::string>(
        {{12, userLine()}, {1, knownFault()}, {isPromising ? 0U : 3U, otherFault()}});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(std::move(line)),
                        [](const std::vector<std::string>& groups) {
                          SessionLines session;
                          for (const auto& group : groups) {
                            std::istringstream lines{group};
                            for (std::string one; std::getline(lines, one);)
                              session.lines.push_back(one);
                          }
                          return session;
                        });
  });
}

}  // namespace

void showValue(const SessionLines& session, std::ostream& out) {
  out << "# A session in which Keyrow broke a promise.\n\n";
  for (const auto line : beginning) out << line << '\n';
  for (const auto& line : session.lines) out << line << '\n';
}

PlayedLines playRandomSession() {
  const auto lines = (*session()).lines;
  Session session;
  const auto play = [&](const std::string& line) {
    const auto problem = session.play(line);
    if (!problem.empty()) RC_FAIL("after \"" + line + "\": " + problem);
  };
  for (const auto line : beginning) play(std::string{line});
  for (const auto& line : lines) play(line);
  const auto problem = session.end();
  if (!problem.empty()) RC_FAIL("at the end: " + problem);
  return {.count = beginning.size() + lines.size(), .promisedCount = session.promisedCount()};
}

}  // namespace keyrow::reliability
