#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "sim/scenario/Prompt.h"
#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {
namespace {

constexpr std::string_view usage =
    "usage: keyrow-sim [--quiet] [FILE ...]\n"
    "\n"
    "Plays scenario files on a simulated Mac and prints the timeline. Without a file, or\n"
    "with -, opens a prompt over the same language.\n"
    "\n"
    "  --quiet   print only what went wrong\n"
    "  --help    print this\n"
    "\n"
    "Exit status: 0 when every expectation held, 1 when one failed, 2 for a line that\n"
    "cannot be parsed or carried out, or a file that cannot be read.\n";

constexpr int statusExpectationFailed = 1;
constexpr int statusUnplayable = 2;

bool wantsColour() { return isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr; }

int exitStatus(const PlayResult& result) {
  if (result.unplayableLines > 0) return statusUnplayable;
  return result.unmetExpectations > 0 ? statusExpectationFailed : 0;
}

void printErrors(const std::string& path, const std::vector<ScenarioError>& errors) {
  constexpr std::size_t mostShown = 20;
  for (std::size_t index = 0; index < std::min(errors.size(), mostShown); ++index) {
    const auto& [line, column, message] = errors[index];
    std::cerr << path << ":";
    if (line > 0) std::cerr << line << ":" << column << ":";
    std::cerr << " " << message << '\n';
  }
  if (errors.size() > mostShown) {
    std::cerr << path << ": and " << errors.size() - mostShown << " more lines like these\n";
  }
}

PlayResult playFile(const std::string& path, PlayListener& listener) {
  constexpr PlayResult unreadable{
      .metExpectations = 0, .unmetExpectations = 0, .unplayableLines = 1};
  const auto text = readScenarioFile(path);
  if (!text) {
    std::cerr << path << ": " << text.error() << '\n';
    return unreadable;
  }
  const auto scenario = parseScenario(path, *text);
  if (!scenario) {
    printErrors(path, scenario.error());
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

int run(std::span<char*> arguments) {
  Detail detail = Detail::timeline;
  std::vector<std::string> paths;
  for (const std::string argument : arguments) {
    if (argument == "--help") {
      std::cout << usage;
      return 0;
    }
    if (argument == "--quiet") {
      detail = Detail::failuresOnly;
    } else if (argument.starts_with("-") && argument != "-") {
      std::cerr << "keyrow-sim: unknown option " << argument << '\n' << usage;
      return statusUnplayable;
    } else {
      paths.push_back(argument);
    }
  }
  if (paths.empty() || paths == std::vector<std::string>{"-"}) {
    return exitStatus(runPrompt(std::cin, std::cout, {isatty(STDIN_FILENO) != 0, wantsColour()}));
  }
  TimelinePrinter printer{std::cout, detail, wantsColour()};
  PlayResult result;
  for (const auto& path : paths) result += playFile(path, printer);
  if (detail == Detail::timeline) printSummary(paths.size(), result);
  return exitStatus(result);
}

}  // namespace
}  // namespace keyrow::sim

int main(int count, char* arguments[]) {
  return keyrow::sim::run(std::span{arguments, static_cast<std::size_t>(count)}.subspan(1));
}
