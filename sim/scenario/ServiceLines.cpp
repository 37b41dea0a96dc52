#include "sim/scenario/ServiceLines.h"

#include <array>

#include "core/AppIdentifier.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Language.h"

namespace keyrow::sim {

namespace {

std::string reminder() { return std::string{appIdentifier} + ".sparkle-update-reminder"; }

}  // namespace

Outcome SetMailService::play(Stage& stage) const {
  stage.mac.mailbox.service = service;
  return {};
}

Outcome SwitchLoginItem::play(Stage& stage) const {
  auto& item = stage.mac.loginItems[stage.mac.sessions.active()];
  if (isOn) {
    item = LoginItemStatus::enabled;
  } else if (item == LoginItemStatus::enabled) {
    item = LoginItemStatus::requiresApproval;
  }
  return {};
}

Outcome RequireApproval::play(Stage& stage) const {
  stage.mac.loginItemsNeedApproval = isRequired;
  return {};
}

Outcome AllowNotifications::play(Stage& stage) const {
  stage.mac.notifications.isAuthorized = areAllowed;
  return {};
}

Outcome FindUpdate::play(Stage& stage) const {
  return stage.tell({}, [this](SimulatedProcess& keyrow) {
    keyrow.simulatedPlatform().updateFramework.findUpdate(version, isInFocus);
    return Outcome{};
  });
}

Outcome AttendUpdate::play(Stage& stage) const {
  return stage.tell({}, [](SimulatedProcess& keyrow) {
    keyrow.simulatedPlatform().updateFramework.attendToUpdate();
    return Outcome{};
  });
}

Outcome FinishUpdate::play(Stage& stage) const {
  return stage.tell({}, [](SimulatedProcess& keyrow) {
    keyrow.simulatedPlatform().updateFramework.finishSession();
    return Outcome{};
  });
}

Outcome OpenNotification::play(Stage& stage) const {
  return stage.tell({}, [](SimulatedProcess& keyrow) {
    return keyrow.simulatedPlatform().userNotifications.click(reminder())
               ? Outcome{}
               : unplayable("there is no notification");
  });
}

Outcome SetInfo::play(Stage& stage) const {
  stage.mac.infoDictionary.erase(key);
  if (value) stage.mac.infoDictionary.emplace(key, *value);
  return {};
}

namespace {

Action parseMail(LineReader& line) {
  constexpr std::array<std::string_view, 3> words{"works", "missing", "refuses"};
  return SetMailService{static_cast<Mailbox::Service>(line.oneOf(words))};
}

Action parseLoginItem(LineReader& line) {
  constexpr std::array<std::string_view, 4> words{"on", "off", "needs-approval", "allowed"};
  const auto word = line.oneOf(words);
  if (word < 2) return SwitchLoginItem{word == 0};
  return RequireApproval{word == 2};
}

Action parseNotifications(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"allowed", "refused"};
  return AllowNotifications{line.oneOf(words) == 0};
}

Action parseUpdate(LineReader& line) {
  constexpr std::array<std::string_view, 3> words{"found", "attended", "finished"};
  const auto word = line.oneOf(words);
  if (word == 1) return AttendUpdate{};
  if (word == 2) return FinishUpdate{};
  auto version = line.word("the version of the update");
  return FindUpdate{std::move(version), line.accept("in-focus")};
}

Action parseOpenNotification(LineReader&) { return OpenNotification{}; }

Action parseInfo(LineReader& line) {
  constexpr std::array<std::string_view, 4> keys{"CFBundleShortVersionString", "CFBundleVersion",
                                                 "SUFeedURL", "SUEnableAutomaticChecks"};
  std::string key{keys[line.oneOf(keys)]};
  return SetInfo{std::move(key), line.valueOrNone()};
}

Expectation expectDraft(LineReader& line) {
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

Expectation expectAttachment(LineReader& line) {
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

Expectation expectNotification(LineReader& line) {
  const auto expected =
      line.accept("none") ? "none" : line.quotedText("what it says in quotation marks, or none");
  return [expected](Stage& stage) {
    const auto& delivered = stage.mac.notifications.delivered;
    const auto found = delivered.find(reminder());
    return expectEqual("the notification", expected,
                       found == delivered.end() ? "none" : found->second.body);
  };
}

constexpr std::array<ActionWord, 6> actions{{
    {"mail", "mail works|missing|refuses", "What the Mac's mail service does with a draft.",
     "mail missing", parseMail},
    {"login-item", "login-item on|off|needs-approval|allowed",
     "The user switches Keyrow on or off among the login items in System Settings: once it is off "
     "there, only the user can switch it on again; or from now on a login item needs to be "
     "approved there, or does not.",
     "login-item off", parseLoginItem},
    {"notifications", "notifications allowed|refused", "Whether Keyrow may post notifications.",
     "notifications refused", parseNotifications},
    {"update", "update found VERSION [in-focus] | update attended|finished",
     "A scheduled check finds an update, while Keyrow is in immediate focus or not; the user looks "
     "at it; the user has done with it.",
     "update found 1.1", parseUpdate},
    {"open notification", "open notification", "The user clicks the update reminder.",
     "open notification", parseOpenNotification},
    {"info", "info KEY VALUE|none",
     "What Keyrow's Info.plist holds: CFBundleShortVersionString, CFBundleVersion, SUFeedURL or "
     "SUEnableAutomaticChecks.",
     "info SUFeedURL none", parseInfo},
}};

constexpr std::array<ExpectationWord, 3> expectations{{
    {"draft", "expect draft \"TEXT\"|none", "A text in the last draft of a mail.",
     "expect draft \"Enhanced diagnostics enabled: No\"", expectDraft},
    {"attachment", "expect attachment \"TEXT\"|none",
     "A text in the file that is attached to the last draft.", "expect attachment none",
     expectAttachment},
    {"notification", "expect notification \"TEXT\"|none", "What the update reminder says.",
     "expect notification \"Version 1.1 is ready to review and install.\"", expectNotification},
}};

}  // namespace

LanguagePart serviceLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
