#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "sim/scenario/ScenarioPlayer.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {

/// How a prompt is held.
struct PromptStyle {
  /// Whether a person is typing: greets, does not repeat what was typed, and leaves typing
  /// errors out of the result.
  bool isInteractive = false;
  bool inColour = false;
};

/// Gives the next line; absent at the end.
using LineSource = std::function<std::optional<std::string>()>;

/// A prompt over the scenario language: plays each line on one stage. Beside the language it
/// knows what `help` lists.
class Prompt {
 public:
  Prompt(std::ostream& out, PromptStyle style);

  /// Plays lines until they end, or until one says "exit".
  PlayResult run(const LineSource& nextLine);

  /// What may stand in place of the last word of this line: words of the language,
  /// applications, keyboards, and titles in quotation marks.
  std::vector<std::string> completions(std::string_view line);

 private:
  void takeLine(const std::string& line);
  bool answer(std::string_view line);
  void playLine(const std::string& line);
  void playFile(const std::string& path);
  /// Says why something cannot be done; counts where no person is typing.
  void refuse(const std::string& why);
  void save(const std::string& path);
  void undo();
  /// Makes a fresh stage, and plays on it what was played before.
  void replay();
  void listen();
  void printStatus();
  void printMenu();
  void printSettings();
  void printHardware();
  void printLog();

  std::ostream& out_;
  const PromptStyle style_;
  TimelinePrinter printer_;
  std::unique_ptr<Stage> stage_;
  /// What was played, in order.
  std::vector<Step> played_;
  /// Files that were saved here, and may be saved again.
  std::vector<std::string> saved_;
  std::size_t lineNumber_ = 0;
  PlayResult result_;
};

/// A source of the lines of a stream. Of a line without an end it gives no more than it takes
/// to see that it is too long.
LineSource linesOf(std::istream& in);

/// The whole language, or what there is to say of one word; says so where it is none.
void printHelp(std::ostream& out, std::string_view word);

}  // namespace keyrow::sim
