#include "sim/scenario/ScreenLines.h"

#include <algorithm>
#include <array>

#include "sim/machine/PropertyText.h"
#include "sim/scenario/Drawing.h"
#include "sim/scenario/Language.h"
#include "sim/scenario/PaneState.h"

namespace keyrow::sim {

namespace {

/// The titles of those that can be chosen, for messages.
std::string listOf(const std::vector<std::string>& titles) {
  std::string list;
  for (const auto& title : titles) list += (list.empty() ? "" : ", ") + quoted(title);
  return list;
}

Outcome cannotBeClicked(SimulatedPlatform& platform, const std::string& title) {
  std::vector<std::string> titles;
  for (const auto& control : openControls(platform)) {
    if (control.title == title) return unplayable(quoted(title) + " is disabled");
    if (control.isEnabled) titles.push_back(control.title);
  }
  return unplayable("nothing here can be clicked that says " + quoted(title) + ", but " +
                    listOf(titles));
}

Outcome chooseFromMenu(SimulatedStatusItemView& item, const std::string& title) {
  std::vector<std::string> titles;
  bool isDisabled = false;
  for (const auto& one : *item.menu()) {
    if (one.action != MenuAction::none && one.isEnabled) titles.push_back(one.title);
    if (one.title == title && !one.isEnabled) isDisabled = true;
  }
  if (isDisabled) {
    return unplayable(quoted(title) + " is disabled; the menu offers " + listOf(titles));
  }
  return item.choose(title)
             ? Outcome{}
             : unplayable("the menu does not offer " + quoted(title) + ", but " + listOf(titles));
}

Outcome chooseFromPopUp(SimulatedPlatform& platform, const std::string& title) {
  if (!isGeneralSelected(platform)) {
    return unplayable("there is no pop-up in this tab");
  }
  if (platform.general.chooseFnReplacement(title)) return {};
  std::vector<std::string> titles;
  for (const auto& item : platform.general.fnReplacementItems) {
    if (!item.isSeparator) titles.emplace_back(item.title);
  }
  return unplayable("the pop-up does not offer " + quoted(title) + ", but " + listOf(titles));
}

}  // namespace

Outcome ClickItem::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    keyrow.statusItem().click(event, isControlHeld);
    return Outcome{};
  });
}

Outcome UseVoiceOver::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    if (showsMenu) {
      keyrow.statusItem().showMenu();
    } else {
      keyrow.statusItem().click(ClickEvent::none);
    }
    return Outcome{};
  });
}

Outcome ClickControl::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    auto& platform = keyrow.simulatedPlatform();
    if (!platform.settingsWindow.isVisible()) return unplayable("the settings window is closed");
    if (!isByVoiceOver) platform.settingsWindow.touch();
    const bool isClicked =
        isGeneralSelected(platform) ? platform.general.click(title) : platform.about.click(title);
    return isClicked ? Outcome{} : cannotBeClicked(platform, title);
  });
}

Outcome Choose::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    auto& platform = keyrow.simulatedPlatform();
    if (platform.statusItem.menu()) return chooseFromMenu(platform.statusItem, title);
    if (!platform.settingsWindow.isVisible()) return unplayable("no menu is open");
    platform.settingsWindow.touch();
    return chooseFromPopUp(platform, title);
  });
}

Outcome ChooseFromMainMenu::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    auto& menu = keyrow.simulatedPlatform().mainMenu;
    if (menu.choose(title)) return Outcome{};
    return unplayable("the main menu does not offer " + quoted(title) + " now, but " +
                      listOf(menu.enabledTitles()));
  });
}

Outcome CloseMenu::play(Stage& stage) const {
  return stage.touch([](SimulatedProcess& keyrow) {
    if (!keyrow.statusItem().menu()) return unplayable("no menu is open");
    keyrow.statusItem().closeMenu();
    return Outcome{};
  });
}

Outcome CloseWindow::play(Stage& stage) const {
  return stage.touch([](SimulatedProcess& keyrow) {
    if (!keyrow.settingsWindow().isVisible()) return unplayable("the settings window is closed");
    keyrow.settingsWindow().close();
    return Outcome{};
  });
}

Outcome SelectTab::play(Stage& stage) const {
  return stage.touch([this](SimulatedProcess& keyrow) {
    if (!keyrow.settingsWindow().isVisible()) return unplayable("the settings window is closed");
    keyrow.settingsWindow().touch();
    keyrow.settingsWindow().selectTab(title);
    return Outcome{};
  });
}

Outcome Answer::play(Stage& stage) const {
  auto& screen = stage.mac.screen;
  const auto* alert = screen.openAlert();
  if (!alert) return unplayable("no alert is open");
  auto message = "the alert " + quoted(alert->messageText) + " has no button " + quoted(button) +
                 ", but " + listOf(alert->buttons);
  return screen.answerAlert(button) ? Outcome{} : unplayable(std::move(message));
}

namespace {

std::array<std::string_view, settingsTabs.size()> tabTitles() {
  std::array<std::string_view, settingsTabs.size()> titles;
  std::ranges::transform(settingsTabs, titles.begin(), &SettingsTab::title);
  return titles;
}

Action parseClick(LineReader& line) {
  if (line.accept("right")) return ClickItem{ClickEvent::rightMouseDown};
  if (line.accept("control")) return ClickItem{ClickEvent::leftMouseUp, /*isControlHeld=*/true};
  if (line.atEnd()) return ClickItem{ClickEvent::leftMouseUp};
  return ClickControl{
      line.quotedText("right, control, or the title of a control in quotation marks")};
}

Action parseVoiceOver(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"press", "show-menu"};
  const bool showsMenu = line.oneOf(words) == 1;
  if (showsMenu || line.atEnd()) return UseVoiceOver{showsMenu};
  return ClickControl{line.quotedText("the title of a control in quotation marks"),
                      /*isByVoiceOver=*/true};
}

Action parseChoose(LineReader& line) {
  return Choose{line.quotedText("the title of an item in quotation marks")};
}

Action parseMenu(LineReader& line) {
  return ChooseFromMainMenu{line.quotedText("the title of an item in quotation marks")};
}

Action parseClose(LineReader& line) {
  constexpr std::array<std::string_view, 2> things{"menu", "window"};
  if (line.oneOf(things) == 0) return CloseMenu{};
  return CloseWindow{};
}

Action parseTab(LineReader& line) {
  const auto titles = tabTitles();
  return SelectTab{std::string{titles[line.oneOf(titles)]}};
}

Action parseAnswer(LineReader& line) {
  return Answer{line.quotedText("the title of a button in quotation marks")};
}

/// What the status item shows, by the name that scenarios use; texts are quoted.
std::string statusAttribute(const SimulatedStatusItemView& item, std::string_view name) {
  if (name == "image") return item.image();
  if (name == "dot") return item.dot();
  if (name == "value") return item.valueText();
  return item.toolTipText();
}

Expectation expectStatus(LineReader& line) {
  constexpr std::array<std::string_view, 4> names{"image", "dot", "tooltip", "value"};
  constexpr std::array<std::string_view, 3> images{"fn", "globe", "none"};
  constexpr std::array<std::string_view, 4> dots{"override", "caps-lock", "both", "none"};
  const auto value = [&](std::size_t name) {
    if (name == 0) return std::string{images[line.oneOf(images)]};
    if (name == 1) return std::string{dots[line.oneOf(dots)]};
    return line.accept("none") ? "none"
                               : quoted(line.quotedText("a text in quotation marks, or none"));
  };

  std::vector<std::pair<std::string, std::string>> expected;
  do {
    const auto name = line.oneOf(names);
    auto what = value(name);
    if (expected.empty() && line.accept("->")) {
      return changePattern(TimelineEvent::Kind::status, {std::string{names[name]}}, what,
                           value(name));
    }
    expected.emplace_back(names[name], std::move(what));
  } while (std::ranges::any_of(names, [&](auto name) { return line.at(name); }));
  return [expected](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("a status item");
    for (const auto& [name, what] : expected) {
      auto outcome = expectEqual("the status item's " + name, what,
                                 statusAttribute(stage.process()->statusItem(), name));
      if (outcome.kind != Outcome::Kind::done) return outcome;
    }
    return Outcome{};
  };
}

/// What is expected of an item of the menu, beside its being there.
struct ExpectedItem {
  std::string title;
  std::string state;
  std::optional<std::uint64_t> place;
  std::optional<std::string> key;
  std::optional<std::string> toolTip;
};

Outcome checkMenu(const std::vector<MenuItem>& menu, const ExpectedItem& expected) {
  const auto name = "the menu item " + quoted(expected.title);
  const auto found = std::ranges::find(menu, expected.title, &MenuItem::title);
  const bool isThere = found != menu.end();
  auto outcome = expectEqual(name, expected.state,
                             !isThere           ? "missing"
                             : found->isEnabled ? "enabled"
                                                : "disabled");
  if (outcome.kind != Outcome::Kind::done || !isThere) return outcome;
  if (expected.place) {
    const auto place = 1 + std::count_if(menu.begin(), found,
                                         [](const MenuItem& item) { return !item.isSeparator; });
    outcome =
        expectEqual("the place of " + name, std::to_string(*expected.place), std::to_string(place));
  }
  if (expected.key && outcome.kind == Outcome::Kind::done) {
    outcome = expectEqual("the key of " + name, quoted(*expected.key), quoted(keyText(*found)));
  }
  if (expected.toolTip && outcome.kind == Outcome::Kind::done) {
    outcome =
        expectEqual("the tool tip of " + name, quoted(*expected.toolTip), quoted(found->toolTip));
  }
  return outcome;
}

Expectation expectMenu(LineReader& line) {
  if (line.accept("closed")) {
    return [](Stage& stage) {
      const bool isOpen = stage.process() && stage.process()->statusItem().menu();
      return expectEqual("the menu", "closed", isOpen ? "open" : "closed");
    };
  }
  constexpr std::array<std::string_view, 3> states{"enabled", "disabled", "missing"};
  ExpectedItem expected;
  expected.title = line.quotedText("the title of a menu item in quotation marks");
  expected.state = states[line.oneOf(states)];
  if (line.accept("at")) expected.place = line.number(1000);
  if (line.accept("key")) expected.key = line.quotedText("a key equivalent, such as \"⌘,\"");
  if (line.accept("tooltip")) expected.toolTip = line.quotedText("a text in quotation marks");
  return [expected](Stage& stage) {
    const auto* menu = stage.process() ? stage.process()->statusItem().menu() : nullptr;
    if (!menu) return unmet("expected an open menu, but there is none");
    return checkMenu(*menu, expected);
  };
}

Expectation expectWindow(LineReader& line) {
  constexpr std::size_t tabless = 3;
  std::array<std::string_view, tabless + settingsTabs.size()> words{"closed", "minimized",
                                                                    "hidden"};
  std::ranges::copy(tabTitles(), words.begin() + tabless);
  const auto word = line.oneOf(words);
  std::string expected{words[word]};
  const bool asksForKey = word >= tabless && line.accept("key");
  if (asksForKey) expected += " key";
  return [expected, asksForKey](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("a settings window");
    const auto& window = stage.process()->settingsWindow();
    std::string actual{window.stateName()};
    if (asksForKey && window.isKey()) actual += " key";
    return expectEqual("the settings window", expected, actual);
  };
}

Expectation expectScreen(LineReader& line) {
  return EventPattern{TimelineEvent::Kind::screen, {line.maybeQuoted()}};
}

Expectation expectVoice(LineReader& line) {
  return EventPattern{TimelineEvent::Kind::voice, {line.maybeQuoted()}};
}

Expectation expectPane(LineReader& line) {
  const auto name = line.word("what the settings window shows, such as shortcut");
  return [name, expected = line.word("its state, or its text in quotation marks")](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("a settings window");
    std::string names;
    for (const auto& [other, state] : paneState(stage.process()->simulatedPlatform())) {
      if (other == name) {
        return expectEqual("the " + name + " in the settings window", expected, state);
      }
      names += (names.empty() ? "" : ", ") + other;
    }
    return unplayable("the settings window shows nothing called " + name + ", but " + names);
  };
}

constexpr std::array<ActionWord, 7> actions{{
    {"click", "click [right|control|\"TITLE\"]",
     "The user clicks Keyrow's item in the menu bar, where a right click and one with Control open "
     "its menu, or a control in the settings window.",
     "click right", parseClick},
    {"voice-over", "voice-over press [\"TITLE\"] | voice-over show-menu",
     "The user presses Keyrow's item with VoiceOver, which is a click without an event, or a "
     "control in the settings window, which may stay behind; or performs the item's action Show "
     "Menu.",
     "voice-over press", parseVoiceOver},
    {"choose", "choose \"TITLE\"",
     "The user chooses from the open menu, or from the pop-up in the settings window.",
     "choose \"Settings…\"", parseChoose},
    {"menu", "menu \"TITLE\"",
     "The user chooses from Keyrow's main menu, as assistive technology can: there is no menu bar "
     "to show it.",
     "menu \"About Keyrow\"", parseMenu},
    {"close", "close menu|window", "The user closes the menu or the settings window.",
     "close window", parseClose},
    {"tab", "tab General|About", "The user selects a tab of the settings window.", "tab About",
     parseTab},
    {"answer", "answer \"BUTTON\"",
     "The user presses a button of the alert that is open, the topmost one; until then nothing "
     "else "
     "of its Keyrow can be clicked.",
     "answer \"Open Accessibility Settings\"", parseAnswer},
}};

constexpr std::array<ExpectationWord, 6> expectations{{
    {"status", "expect status image|dot|tooltip|value VALUE [-> VALUE]",
     "What Keyrow's item in the menu bar shows, or a change of it: the image fn, globe or none, "
     "the dot override, caps-lock, both or none, the tool tip, a text or none, and the value "
     "that VoiceOver has for it, a text or none. Several may follow each other.",
     "expect status image fn dot override", expectStatus},
    {"menu",
     "expect menu \"TITLE\" enabled|disabled|missing [at N] [key \"KEY\"] [tooltip \"TEXT\"] | "
     "expect menu closed",
     "An item of the open menu: its place among the items that have a title, its key equivalent "
     "and its tool tip; or that no menu is open.",
     "expect menu \"Quit\" enabled at 6 key \"⌘q\"", expectMenu},
    {"window", "expect window General|About [key] | expect window closed|minimized|hidden",
     "The settings window and its selected tab, and whether keys go to it; or that it is closed, "
     "in the Dock, or hidden with Keyrow.",
     "expect window General key", expectWindow},
    {"screen", "expect screen [\"TEXT\"]",
     "What the user saw on the screen: a window, an alert, a prompt, a page that was opened.",
     "expect screen \"settings window, General\"", expectScreen},
    {"voice", "expect voice [\"TEXT\"]", "What VoiceOver speaks because Keyrow asks it to.",
     "expect voice \"Standard function keys by default\"", expectVoice},
    {"pane", "expect pane NAME \"STATE\"",
     "What the settings window shows: permission, permission-button, permission-tip, "
     "permission-help, login-item, caps-lock-indicator, external-keys, shortcut, "
     "shortcut-tip, reset, shortcut-hint, replacement, replacement-hint; version, diagnostics, "
     "auto-update.",
     "expect pane shortcut \"Fn + `\"", expectPane},
}};

}  // namespace

LanguagePart screenLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
