#include "desk/Snapshot.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "desk/TopRow.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Drawing.h"
#include "sim/scenario/PaneState.h"
#include "sim/scenario/TimelinePrinter.h"
#include "ui/AboutLayout.h"
#include "ui/GeneralLayout.h"

namespace keyrow::desk {

namespace {

using nlohmann::json;
using sim::SimulatedPlatform;
using sim::SimulatedProcess;
using sim::Stage;

json textOrNull(const std::optional<std::string>& text) { return text ? json(*text) : json{}; }

json place(const RowPlace& place) {
  static constexpr std::array<std::string_view, 4> widths{"full", "atMost", "leading", "centred"};
  return {{"topGap", place.topGap},
          {"width", widths.at(static_cast<std::size_t>(place.width))},
          {"isTopGapMinimum", place.isTopGapMinimum}};
}

json hint(std::string_view text) { return {{"kind", "hint"}, {"text", text}}; }

json button(std::string_view title, bool isEnabled = true) {
  return {{"title", title}, {"isEnabled", isEnabled}};
}

json control(const sim::SimulatedGeneralView& general, generalLayout::Control what) {
  namespace layout = generalLayout;
  using enum layout::Control;
  switch (what) {
    case permissionStack:
      return {{"kind", "permission"},
              {"button", button(general.permissionButtonTitle)},
              {"help", button(layout::permissionHelpTitle)},
              {"color", general.permissionColor == PermissionColor::green ? "green" : "red"},
              {"toolTip", general.permissionToolTip},
              {"dotSize", layout::permissionIndicatorSize},
              {"spacing", layout::permissionStackSpacing},
              {"popover", general.isPopoverShown ? json(layout::popoverText) : json{}},
              {"popoverWidth", layout::popoverWidth},
              {"popoverInset", layout::popoverInset}};
    case localShortcut:
      return {{"kind", "shortcut"},
              {"title", layout::localShortcutTitle},
              {"button", button(general.localShortcutTitle)},
              {"toolTip", general.localShortcutTip},
              {"reset", button(layout::resetTitle, general.isResetEnabled)},
              {"gap", layout::minimumGapAfterLabel},
              {"maximumWidth", layout::localShortcutMaximumWidth},
              {"gapBeforeReset", layout::gapBeforeReset}};
    case localShortcutHint:
      return hint(general.localShortcutHint);
    case fnReplacement: {
      auto items = json::array();
      for (const auto& item : general.fnReplacementItems) {
        items.push_back({{"title", item.title}, {"isSeparator", item.isSeparator}});
      }
      return {{"kind", "popUp"},
              {"title", layout::fnReplacementTitle},
              {"items", std::move(items)},
              {"selected", general.selectedFnReplacementItem},
              {"gap", layout::minimumGapAfterLabel}};
    }
    case fnReplacementHint:
      return hint(general.fnReplacementHint);
  }
  return {};
}

json control(const sim::SimulatedAboutView& about, aboutLayout::Control what) {
  namespace layout = aboutLayout;
  using enum layout::Control;
  switch (what) {
    case appIcon:
      return {{"kind", "icon"}, {"size", layout::iconSize}};
    case description:
      return {{"kind", "text"}, {"text", layout::descriptionText}};
    case version:
      return {{"kind", "text"}, {"text", about.version}, {"isSmall", true}};
    case contactActions:
      return {{"kind", "buttons"},
              {"buttons", {button(layout::contactTitle), button(layout::reportBugTitle)}},
              {"spacing", layout::actionsSpacing}};
    case checkUpdates:
      return {{"kind", "buttons"}, {"buttons", {button(layout::checkUpdatesTitle)}}};
  }
  return {};
}

json rowsOf(const auto& pane, const auto& rows) {
  auto all = json::array();
  for (const auto& row : rows) {
    json drawn;
    if (const auto* box = std::get_if<Checkbox>(&row.what)) {
      drawn = {{"kind", "checkbox"},
               {"name", box->name},
               {"title", box->title},
               {"isOn", pane.isChecked(box->what)}};
    } else if (const auto* text = std::get_if<Hint>(&row.what)) {
      drawn = hint(text->text);
    } else {
      drawn = control(pane, std::get<0>(row.what));
    }
    drawn["place"] = place(row.place);
    all.push_back(std::move(drawn));
  }
  return all;
}

json paneOf(SimulatedPlatform& platform) {
  if (!sim::isGeneralSelected(platform)) {
    return {{"rows", rowsOf(platform.about, aboutLayout::rows)},
            {"bottomGap", aboutLayout::bottomGap}};
  }
  return {{"rows", rowsOf(platform.general, generalLayout::rows)},
          {"quit", button(generalLayout::quitTitle)},
          {"gapAboveQuit", generalLayout::minimumGapAboveQuit},
          {"bottomGap", generalLayout::quitBottomGap}};
}

json windowOf(SimulatedProcess& process) {
  const auto& window = process.settingsWindow();
  if (!window.isVisible()) return {};
  auto tabs = json::array();
  for (const auto& tab : settingsTabs) tabs.push_back(tab.title);
  return {{"title", settingsWindowTitle},
          {"tabs", std::move(tabs)},
          {"tab", window.selectedTab().title},
          {"isKey", window.isKey()},
          {"width", window.contentSize().width},
          {"height", window.contentSize().height},
          {"inset", paneInset},
          {"pane", paneOf(process.simulatedPlatform())}};
}

json menuOf(const sim::SimulatedStatusItemView& item) {
  if (!item.menu()) return {};
  auto items = json::array();
  for (const auto& one : *item.menu()) {
    if (one.isSeparator) {
      items.push_back({{"kind", "separator"}});
      continue;
    }
    items.push_back({{"kind", one.action == MenuAction::none ? "heading" : "item"},
                     {"title", one.title},
                     {"key", sim::keyText(one)},
                     {"isEnabled", one.isEnabled},
                     {"toolTip", one.toolTip}});
  }
  return items;
}

json itemOf(const sim::SimulatedStatusItemView& item) {
  if (!item.exists()) return {};
  constexpr StatusIndicatorLayout indicator;
  return {{"image", item.image()},
          {"hasOverrideDot", !item.isScopeIndicatorHidden()},
          {"hasCapsLockDot", !item.isCapsLockIndicatorHidden()},
          {"toolTip", textOrNull(item.scopeToolTip())},
          {"value", item.accessibilityValue()},
          {"isHighlighted", item.isHighlighted()},
          {"dotSize", indicator.diameter},
          {"dotGap", indicator.leadingToButtonTrailing},
          {"menuX", statusMenuX},
          {"menu", menuOf(item)}};
}

json keyrowOf(Stage& stage) {
  auto* process = stage.process();
  if (!process) return {};
  return {{"pid", process->processID()},
          {"isHanging", process->isHanging()},
          {"item", itemOf(process->statusItem())},
          {"window", windowOf(*process)},
          {"mainMenu", process->simulatedPlatform().mainMenu.enabledTitles()}};
}

std::string textProperty(const sim::SimulatedKeyboard& keyboard, std::string_view key) {
  const auto found = keyboard.properties.find(key);
  const auto* text = found == keyboard.properties.end() ? nullptr : found->second.string();
  return text ? *text : std::string{};
}

bool isBuiltIn(const sim::SimulatedKeyboard& keyboard) {
  const auto found = keyboard.properties.find("Built-In");
  return found != keyboard.properties.end() && found->second == PropertyValue{true};
}

json keyboardOf(Stage& stage, const std::string& name) {
  constexpr std::int64_t keypad = 7;
  const auto keyboard = stage.mac.keyboards.find(name);
  auto row = json::array();
  for (const auto& key : topRow(stage, name)) {
    row.push_back({{"key", key.name}, {"does", key.does}, {"isTranslated", key.isTranslated}});
  }
  return {{"name", name},
          {"product", textProperty(*keyboard, "Product")},
          {"isApples", stage.mac.keyboardFilters.isApples(name)},
          {"isBuiltIn", isBuiltIn(*keyboard)},
          {"isKeypad", keyboard->usage == keypad},
          {"isExclusive", keyboard->isExclusive},
          {"held", stage.mac.keyboardFilters.heldKeys(name)},
          {"topRow", std::move(row)}};
}

json keyboardsOf(Stage& stage) {
  auto keyboards = json::array();
  for (const auto& name : stage.mac.keyboards.attachedNames()) {
    keyboards.push_back(keyboardOf(stage, name));
  }
  return keyboards;
}

json faultsOf(const sim::Faults& faults) {
  auto failing = json::array();
  for (std::size_t index = 0; index < sim::portCalls.size(); ++index) {
    const auto left = faults.failuresLeft(static_cast<sim::PortCall>(index));
    if (left > 0) failing.push_back(sim::portCalls[index].name);
  }
  return failing;
}

json loginItemOf(const sim::SimulatedMac& mac) {
  const auto item = mac.loginItems.find(mac.sessions.active());
  switch (item == mac.loginItems.end() ? LoginItemStatus::notRegistered : item->second) {
    case LoginItemStatus::enabled:
      return "on";
    case LoginItemStatus::requiresApproval:
      return "needs approval";
    case LoginItemStatus::notRegistered:
      break;
  }
  return "off";
}

json systemOf(const sim::SimulatedMac& mac) {
  static constexpr std::array<std::string_view, 3> mailWords{"works", "missing", "refuses"};
  return {{"mode", mac.hid.modeName()},
          {"accessibility", mac.isAccessibilityGranted.load()},
          {"inputMonitoring", sim::nameOf(mac.inputMonitoring.access())},
          {"asksForInputMonitoring", mac.inputMonitoring.isAsking()},
          {"loginItem", loginItemOf(mac)},
          {"loginItemsNeedApproval", mac.loginItemsNeedApproval},
          {"allowsNotifications", mac.notifications.isAuthorized},
          {"mail", mailWords.at(static_cast<std::size_t>(mac.mailbox.service))},
          {"secureInput", mac.isSecureInputOn()},
          {"capsLock", mac.isCapsLockOn},
          {"areEventTimesNanoseconds", mac.areEventTimesNanoseconds},
          {"tap", mac.eventTaps.state()},
          {"faults", faultsOf(mac.faults)}};
}

json alertOf(const sim::Screen& screen) {
  const auto* alert = screen.openAlert();
  if (!alert) return {};
  return {{"owner", alert->owner},
          {"message", alert->messageText},
          {"informative", alert->informativeText},
          {"buttons", alert->buttons}};
}

json notificationsOf(const sim::SimulatedMac& mac) {
  auto notifications = json::array();
  for (const auto& [identifier, notification] : mac.notifications.delivered) {
    notifications.push_back({{"title", notification.title}, {"body", notification.body}});
  }
  return notifications;
}

json mailOf(const sim::SimulatedMac& mac) {
  if (mac.mailbox.drafts.empty()) return {};
  const auto& draft = mac.mailbox.drafts.back();
  json attachment;
  if (draft.attachment) {
    const auto file = mac.files.find(*draft.attachment);
    attachment = {{"name", draft.attachment->substr(draft.attachment->rfind('/') + 1)},
                  {"text", file == mac.files.end() ? "" : file->second}};
  }
  return {{"number", mac.mailbox.drafts.size()},
          {"recipient", draft.recipient},
          {"subject", draft.subject},
          {"body", draft.body},
          {"attachment", std::move(attachment)}};
}

}  // namespace

json snapshot(Stage& stage) {
  const auto& mac = stage.mac;
  const auto time = sim::TimelinePrinter::dateAndTime(mac.scheduler.now());
  constexpr std::size_t dateLength = 10;
  auto processes = json::array();
  for (const auto& process : mac.applications.running(appIdentifier)) {
    processes.push_back({{"pid", process->processIdentifier}, {"user", process->user}});
  }
  return {{"date", time.substr(0, dateLength)},
          {"clock", time.substr(dateLength + 1)},
          {"isAsleep", mac.power.isAsleep()},
          {"user", mac.sessions.active()},
          {"front", textOrNull(mac.applications.frontmost())},
          {"frontName", mac.applications.nameOfFrontmost()},
          {"apps", mac.applications.installed()},
          {"keyboards", keyboardsOf(stage)},
          {"processes", std::move(processes)},
          {"keyrow", keyrowOf(stage)},
          {"system", systemOf(mac)},
          {"alert", alertOf(mac.screen)},
          {"notifications", notificationsOf(mac)},
          {"mail", mailOf(mac)}};
}

}  // namespace keyrow::desk
