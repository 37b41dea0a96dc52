#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Utf8.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::sim {
namespace {

using fuzz::require;

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// How many characters the line has; what is no UTF-8 only has to give some number here.
std::size_t length(std::string_view line) {
  return static_cast<std::size_t>(
      std::ranges::count_if(line, [](char c) { return (c & 0xC0) != 0x80; }));
}

void checkErrors(const std::vector<ScenarioError>& errors,
                 const std::vector<std::string_view>& lines) {
  require(!errors.empty(), "a refused scenario has an error");
  std::size_t previous = 0;
  for (const auto& error : errors) {
    require(!error.message.empty() && fuzz::isUtf8(error.message), "an error has a readable text");
    if (error.line == 0) {
      require(errors.size() == 1 && error.column == 0,
              "an error of the scenario as a whole stands alone");
      continue;
    }
    require(error.line > previous, "errors come in the order of the lines, one for each");
    previous = error.line;
    require(error.line <= lines.size(), "an error is in one of the lines");
    require(error.column >= 1 && error.column <= length(lines[error.line - 1]) + 1,
            "an error is within its line, or right behind it");
  }
}

/// A step as it is shown reads as the same step again.
void checkText(const Step& step) {
  const auto again = parseLine(step.isComment() ? "#" + step.text : step.text, step.line);
  require(again && *again, "a step's text can be parsed");
  require((*again)->content.index() == step.content.index() && (*again)->text == step.text,
          "a step's text stands for the step");
  const auto* action = step.action();
  require(!action || (*again)->action()->index() == action->index(),
          "a step's text does what the step does");
}

void checkScenario(const Scenario& scenario, const std::vector<std::string_view>& lines) {
  std::size_t previous = 0;
  bool happensAnything = false;
  for (const auto& step : scenario.steps) {
    require(step.line > previous && step.line <= lines.size(), "steps come line by line");
    previous = step.line;
    require(step.column >= 1 && step.column <= length(lines[step.line - 1]),
            "a step begins within its line");
    happensAnything = happensAnything || !step.isComment();
    checkText(step);
  }
  require(happensAnything, "something happens in a scenario");
}

}  // namespace
}  // namespace keyrow::sim

/// Any bytes are a scenario, or are refused with errors at places that exist.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  const auto lines = keyrow::sim::linesOf(text);
  const auto scenario = keyrow::sim::parseScenario("fuzzed", text);
  if (scenario) {
    keyrow::sim::checkScenario(*scenario, lines);
  } else {
    keyrow::sim::checkErrors(scenario.error(), lines);
  }
  return 0;
}
