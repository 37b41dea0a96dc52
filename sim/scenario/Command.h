#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sim/scenario/LineReader.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// How playing one line went.
struct Outcome {
  enum class Kind {
    done,
    /// An expectation that does not hold.
    unmet,
    /// An action that cannot be carried out as things stand.
    unplayable,
  };

  Kind kind = Kind::done;
  /// What was expected and what was there; empty when done.
  std::string message;
};

/// Carries a parsed line out.
using Play = std::function<Outcome(Stage&)>;

/// One line of the scenario language.
struct Command {
  /// The words that it begins with, one or two.
  std::string_view words;
  /// The whole line, with what varies in capitals and what may be left out in brackets.
  std::string_view usage;
  std::string_view summary;
  std::string_view example;
  /// Reads the rest of the line.
  Play (*parse)(LineReader& line);
};

/// What happens on the Mac around Keyrow.
std::span<const Command> machineCommands();

/// What happens on the screen: the user at Keyrow's views, permissions, sleep.
std::span<const Command> desktopCommands();

/// Keys that are pressed, and what can happen to the event tap.
std::span<const Command> keyCommands();

/// What the settings window works with: mail, login items, updates.
std::span<const Command> paneCommands();

/// What happens to Keyrow, and what its user tells it.
std::span<const Command> keyrowCommands();

/// What has to hold, of the modes and of what is stored and logged.
std::span<const Command> stateExpectations();

/// What has to hold, of what the user sees.
std::span<const Command> desktopExpectations();

/// What has to hold, of keys.
std::span<const Command> keyExpectations();

/// What has to hold, of the settings window.
std::span<const Command> paneExpectations();

/// All actions, and all expectations, group by group.
std::array<std::span<const Command>, 5> actions();
std::array<std::span<const Command>, 4> expectations();

/// An outcome "expected ..., but it is ..." when the two differ.
Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual);

/// An outcome "expected ..., but ..." when no event of this kind and text, or any when the
/// text is absent, happened since the last action began; `where` ends the expectation.
Outcome expectEvent(Stage& stage, TimelineEvent::Kind kind, const std::optional<std::string>& text,
                    std::string_view where);

Outcome unmet(std::string message);
Outcome unplayable(std::string message);
Outcome keyrowNotRunning();

}  // namespace keyrow::sim
