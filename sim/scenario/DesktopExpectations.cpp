#include <algorithm>
#include <array>

#include "sim/machine/PropertyText.h"
#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

Play expectStatus(LineReader& line) {
  constexpr std::string_view wanted = "image=, dot= or tooltip=";
  std::optional<std::string> image;
  std::optional<std::string> dot;
  std::optional<std::string> toolTip;
  do {
    const auto property = line.property(wanted);
    const auto* text = property.value ? property.value->string() : nullptr;
    auto* target = property.key == "image"     ? &image
                   : property.key == "dot"     ? &dot
                   : property.key == "tooltip" ? &toolTip
                                               : nullptr;
    if (!target || (property.value && !text)) line.failBefore(wanted);
    *target = text ? *text : "none";
  } while (!line.atEnd());
  return [image, dot, toolTip](Stage& stage) {
    if (!stage.process()) return unmet("expected a status item, but Keyrow is not running");
    auto& item = stage.process()->statusItem();
    if (image && *image != item.image()) {
      return expectEqual("the status item's image", *image, item.image());
    }
    if (dot && *dot != item.dot()) return expectEqual("the status item's dot", *dot, item.dot());
    if (toolTip) {
      return expectEqual("the dot's tool tip", *toolTip, item.scopeToolTip().value_or("none"));
    }
    return Outcome{};
  };
}

Play expectMenu(LineReader& line) {
  const auto title = line.quotedText("the title of a menu item in quotation marks");
  constexpr std::array<std::string_view, 3> states{"enabled", "disabled", "missing"};
  const std::string expected{states[line.oneOf(states)]};
  return [title, expected](Stage& stage) {
    const auto* menu = stage.process() ? stage.process()->statusItem().menu() : nullptr;
    if (!menu) return unmet("expected an open menu, but there is none");
    const auto found = std::ranges::find(*menu, title, &MenuItem::title);
    const std::string actual = found == menu->end() ? "missing"
                               : found->isEnabled   ? "enabled"
                                                    : "disabled";
    return expectEqual("the menu item " + quoted(title), expected, actual);
  };
}

Play expectWindow(LineReader& line) {
  std::array<std::string_view, settingsTabs.size() + 1> words{"closed"};
  for (std::size_t index = 1; index < words.size(); ++index) {
    words[index] = settingsTabs[index - 1].title;
  }
  return [expected = std::string{words[line.oneOf(words)]}](Stage& stage) {
    if (!stage.process()) return unmet("expected a settings window, but Keyrow is not running");
    const auto& window = stage.process()->settingsWindow();
    const auto actual = window.isVisible() ? window.selectedTab().title : "closed";
    return expectEqual("the settings window", expected, std::string{actual});
  };
}

Play expectScreen(LineReader& line) {
  const bool nothing = line.accept("nothing");
  const auto expected = nothing ? std::string{} : line.quotedText("a text in quotation marks");
  return [nothing, expected](Stage& stage) {
    return expectEvent(stage, TimelineEvent::Kind::screen,
                       nothing ? std::nullopt : std::optional{expected}, "on the screen");
  };
}

Play expectInstances(LineReader& line) {
  return [expected = line.number(1000)](Stage& stage) {
    return expectEqual("the number of running instances", std::to_string(expected),
                       std::to_string(stage.runningCount()));
  };
}

constexpr std::array<Command, 5> commands{{
    {"expect status",
     "expect status [image=fn|globe|none] [dot=override|caps-lock|none] "
     "[tooltip=\"TEXT\"|none]",
     "What Keyrow's item in the menu bar shows.", "expect status image=fn dot=override",
     expectStatus},
    {"expect menu", "expect menu \"TITLE\" enabled|disabled|missing", "An item of the open menu.",
     "expect menu \"Use F1-F12 by Default\" enabled", expectMenu},
    {"expect window", "expect window General|About|closed",
     "The settings window and its selected tab.", "expect window General", expectWindow},
    {"expect screen", "expect screen \"TEXT\"|nothing",
     "What the user saw on the screen since the last action began: a window, an alert, a prompt, "
     "a page that was opened.",
     "expect screen \"settings window, General\"", expectScreen},
    {"expect instances", "expect instances N", "How many instances of Keyrow run.",
     "expect instances 1", expectInstances},
}};

}  // namespace

std::span<const Command> desktopExpectations() { return commands; }

}  // namespace keyrow::sim
