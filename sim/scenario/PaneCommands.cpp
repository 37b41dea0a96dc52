#include <algorithm>
#include <array>

#include "core/AppIdentifier.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Command.h"
#include "sim/scenario/PaneState.h"

namespace keyrow::sim {

namespace {

Play parseMail(LineReader& line) {
  constexpr std::array<std::string_view, 3> words{"works", "missing", "refuses"};
  return [service = static_cast<Mailbox::Service>(line.oneOf(words))](Stage& stage) {
    stage.mac.mailbox.service = service;
    return Outcome{};
  };
}

Play parseLoginItem(LineReader& line) {
  constexpr std::array<std::string_view, 4> words{"on", "off", "needs-approval", "allowed"};
  return [word = line.oneOf(words)](Stage& stage) {
    auto& mac = stage.mac;
    if (word == 0) mac.loginItemStatus = LoginItemStatus::enabled;
    if (word == 1) mac.loginItemStatus = LoginItemStatus::notRegistered;
    if (word >= 2) mac.loginItemsNeedApproval = word == 2;
    return Outcome{};
  };
}

Play parseNotifications(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"allowed", "refused"};
  return [isAllowed = line.oneOf(words) == 0](Stage& stage) {
    stage.mac.notifications.isAuthorized = isAllowed;
    return Outcome{};
  };
}

Play parseUpdate(LineReader& line) {
  constexpr std::array<std::string_view, 3> words{"found", "attended", "finished"};
  const auto word = line.oneOf(words);
  const auto version = word == 0 ? line.word("the version of the update") : std::string{};
  const bool inFocus = word == 0 && line.accept("in-focus");
  return [word, version, inFocus](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    auto& framework = process->simulatedPlatform().updateFramework;
    if (word == 0) framework.findUpdate(version, inFocus);
    if (word == 1) framework.attendToUpdate();
    if (word == 2) framework.finishSession();
    return Outcome{};
  };
}

std::string reminder() { return std::string{appIdentifier} + ".sparkle-update-reminder"; }

Play parseOpenNotification(LineReader&) {
  return [](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    return process->simulatedPlatform().userNotifications.click(reminder())
               ? Outcome{}
               : unplayable("there is no notification");
  };
}

Play parseInfo(LineReader& line) {
  const auto key = line.word("a key of Info.plist");
  return [key, value = line.valueOrNone()](Stage& stage) {
    stage.mac.infoDictionary.erase(key);
    if (value) stage.mac.infoDictionary.emplace(key, *value);
    return Outcome{};
  };
}

Play expectPane(LineReader& line) {
  const auto name = line.word("what the settings window shows, such as shortcut");
  return [name, expected = line.word("its state, or its text in quotation marks")](Stage& stage) {
    if (!stage.process()) return unmet("expected a settings window, but Keyrow is not running");
    const auto state = paneState(stage.process()->simulatedPlatform());
    const auto found = std::ranges::find(state, name, [](const auto& one) { return one.first; });
    if (found == state.end()) return unmet("the settings window shows nothing called " + name);
    return expectEqual("the " + name + " in the settings window", expected, found->second);
  };
}

Play expectDraft(LineReader& line) {
  if (line.accept("none")) {
    return [](Stage& stage) {
      return stage.mac.mailbox.drafts.empty() ? Outcome{}
                                              : unmet("expected no draft, but there is one");
    };
  }
  return [text = line.quotedText("a text of the draft in quotation marks, or none")](Stage& stage) {
    if (stage.mac.mailbox.drafts.empty()) return unmet("expected a draft, but there is none");
    const auto& body = stage.mac.mailbox.drafts.back().body;
    if (body.find(text) != std::string::npos) return Outcome{};
    return unmet("expected the draft to hold " + quoted(text) + ", but it is\n" + body);
  };
}

Play expectAttachment(LineReader& line) {
  const bool none = line.accept("none");
  const auto text =
      none ? std::string{} : line.quotedText("a text of the file in quotation marks, or none");
  return [none, text](Stage& stage) {
    if (stage.mac.mailbox.drafts.empty()) return unmet("expected a draft, but there is none");
    const auto& attachment = stage.mac.mailbox.drafts.back().attachment;
    if (!attachment) return none ? Outcome{} : unmet("expected a file, but none is attached");
    if (none) return unmet("expected no file, but there is " + *attachment);
    const auto& contents = stage.mac.files[*attachment];
    if (contents.find(text) != std::string::npos) return Outcome{};
    return unmet("expected " + *attachment + " to hold " + quoted(text) + ", but it is\n" +
                 contents);
  };
}

Play expectNotification(LineReader& line) {
  const auto expected =
      line.accept("none") ? "none" : line.quotedText("what it says in quotation marks, or none");
  return [expected](Stage& stage) {
    const auto& delivered = stage.mac.notifications.delivered;
    const auto found = delivered.find(reminder());
    return expectEqual("the notification", expected,
                       found == delivered.end() ? "none" : found->second.body);
  };
}

constexpr std::array<Command, 6> commands{{
    {"mail", "mail works|missing|refuses", "What the Mac's mail service does with a draft.",
     "mail missing", parseMail},
    {"login-item", "login-item on|off|needs-approval|allowed",
     "The user switches Keyrow on or off among the login items in System Settings; or from now on "
     "a login item needs to be approved there, or does not.",
     "login-item off", parseLoginItem},
    {"notifications", "notifications allowed|refused", "Whether Keyrow may post notifications.",
     "notifications refused", parseNotifications},
    {"update", "update found VERSION [in-focus] | update attended|finished",
     "A scheduled check finds an update, while Keyrow is in immediate focus or not; the user looks "
     "at it; the user has done with it.",
     "update found 1.1", parseUpdate},
    {"open notification", "open notification", "The user clicks the update reminder.",
     "open notification", parseOpenNotification},
    {"info", "info KEY VALUE|none", "What Keyrow's Info.plist holds.", "info SUFeedURL none",
     parseInfo},
}};

constexpr std::array<Command, 4> expectationTable{{
    {"expect pane", "expect pane NAME \"STATE\"",
     "What the settings window shows: permission, permission-tip, permission-help, login-item, "
     "caps-lock-indicator, external-keys, shortcut, reset, shortcut-hint, replacement, "
     "replacement-hint; version, diagnostics, auto-update.",
     "expect pane shortcut \"Fn + `\"", expectPane},
    {"expect draft", "expect draft \"TEXT\"|none", "A text in the last draft of a mail.",
     "expect draft \"Enhanced diagnostics enabled: No\"", expectDraft},
    {"expect attachment", "expect attachment \"TEXT\"|none",
     "A text in the file that is attached to the last draft.", "expect attachment none",
     expectAttachment},
    {"expect notification", "expect notification \"TEXT\"|none", "What the update reminder says.",
     "expect notification \"Version 1.1 is ready to review and install.\"", expectNotification},
}};

}  // namespace

std::span<const Command> paneCommands() { return commands; }

std::span<const Command> paneExpectations() { return expectationTable; }

}  // namespace keyrow::sim
