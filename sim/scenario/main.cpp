#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "sim/scenario/LineEditor.h"
#include "sim/scenario/Prompt.h"
#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {
namespace {

constexpr std::string_view usage =
    "usage: keyrow-sim [--quiet] [--] [FILE|FOLDER ...]\n"
    "\n"
    "Plays scenarios on a simulated Mac and prints the timeline: files, or all files of a\n"
    "folder. Without any, or with -, opens a prompt over the same language.\n"
    "\n"
    "  --quiet      print only what went wrong\n"
    "  -h, --help   print this\n"
    "  --version    print which Keyrow is simulated\n"
    "  --           what follows are files, whatever they are called\n"
    "\n"
    "Exit status: 0 when every expectation held, 1 when one failed, 2 for a line that\n"
    "cannot be parsed or carried out, or a file that cannot be read. At the prompt, what\n"
    "a person types wrong does not count.\n";

constexpr int statusExpectationFailed = 1;
constexpr int statusUnplayable = 2;

bool wantsColour() { return isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr; }

int exitStatus(const PlayResult& result) {
  // A full disk shows only when everything is to be written.
  if (!std::cout.flush()) {
    std::cerr << "keyrow-sim: standard output cannot be written: " << std::strerror(errno) << '\n';
    return statusUnplayable;
  }
  if (result.unplayableLines > 0) return statusUnplayable;
  return result.unmetExpectations > 0 ? statusExpectationFailed : 0;
}

constexpr PlayResult unreadable{.metExpectations = 0, .unmetExpectations = 0, .unplayableLines = 1};

PlayResult playFile(const std::string& path, PlayListener& listener) {
  const auto scenario = readScenario(path);
  if (!scenario) {
    printErrors(std::cerr, path, scenario.error());
    return unreadable;
  }
  return playScenario(*scenario, listener);
}

void printSummary(std::size_t scenarios, const PlayResult& result) {
  std::cout << '\n'
            << scenarios << (scenarios == 1 ? " scenario, " : " scenarios, ")
            << result.metExpectations << " expectations held, " << result.unmetExpectations
            << " failed";
  if (result.unplayableLines > 0) {
    std::cout << ", " << result.unplayableLines << " could not be played";
  }
  std::cout << ".\n";
}

PlayResult prompt() {
  const PromptStyle style{.isInteractive = isatty(STDIN_FILENO) != 0, .inColour = wantsColour()};
  Prompt prompt{std::cout, style};
  if (!style.isInteractive) return prompt.run(linesOf(std::cin));
  LineEditor editor{[&prompt](std::string_view line) { return prompt.completions(line); }};
  return prompt.run([&editor] { return editor.nextLine(); });
}

PlayResult playAll(const std::vector<std::string>& paths, Detail detail) {
  TimelinePrinter printer{std::cout, detail, wantsColour()};
  PlayResult result;
  std::size_t count = 0;
  for (const auto& path : paths) {
    const auto files = scenarioFiles(path);
    if (!files) {
      std::cerr << path << ": " << files.error() << '\n';
      result += unreadable;
      continue;
    }
    for (const auto& file : *files) result += playFile(file, printer);
    count += files->size();
  }
  if (detail == Detail::timeline) printSummary(count, result);
  return result;
}

int run(std::span<char*> arguments) {
  Detail detail = Detail::timeline;
  std::vector<std::string> paths;
  bool areOptionsOver = false;
  for (const std::string argument : arguments) {
    if (areOptionsOver || argument == "-" || !argument.starts_with("-")) {
      paths.push_back(argument);
    } else if (argument == "--") {
      areOptionsOver = true;
    } else if (argument == "-h" || argument == "--help") {
      std::cout << usage;
      return exitStatus({});
    } else if (argument == "--version") {
      std::cout << "keyrow-sim " << KEYROW_VERSION << '\n';
      return exitStatus({});
    } else if (argument == "--quiet") {
      detail = Detail::failuresOnly;
    } else {
      std::cerr << "keyrow-sim: unknown option " << argument << '\n' << usage;
      return statusUnplayable;
    }
  }
  const bool wantsPrompt =
      paths.empty() || (!areOptionsOver && paths == std::vector<std::string>{"-"});
  return exitStatus(wantsPrompt ? prompt() : playAll(paths, detail));
}

}  // namespace
}  // namespace keyrow::sim

int main(int count, char* arguments[]) {
  return keyrow::sim::run(std::span{arguments, static_cast<std::size_t>(count)}.subspan(1));
}
