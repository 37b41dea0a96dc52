#include "sim/scenario/ScenarioParser.h"

#include <algorithm>
#include <utility>

namespace keyrow::sim {

namespace {

/// Whether this is the command that the line begins with.
bool begins(LineReader& line, const Command& command) {
  const auto blank = command.words.find(' ');
  auto attempt = line;
  if (!attempt.accept(command.words.substr(0, blank))) return false;
  if (blank != std::string_view::npos && !attempt.accept(command.words.substr(blank + 1))) {
    return false;
  }
  line = attempt;
  return true;
}

Play parseCommand(LineReader& line, std::span<const std::span<const Command>> groups) {
  for (const auto group : groups) {
    for (const auto& command : group) {
      if (!begins(line, command)) continue;
      auto play = command.parse(line);
      line.end();
      return play;
    }
  }
  return nullptr;
}

std::string expectationNames() {
  std::string names;
  for (const auto group : expectations()) {
    for (const auto& command : group) {
      if (!names.empty()) names += ", ";
      names += command.words.substr(command.words.find(' ') + 1);
    }
  }
  return names;
}

Step parseTokens(const TokenizedLine& tokens, std::size_t number) {
  LineReader line{tokens};
  Step step{.line = number,
            .column = tokens.tokens.front().column,
            .kind = Step::Kind::action,
            .text = {},
            .play = {}};
  step.play = parseCommand(line, actions());
  if (step.play) return step;

  step.kind = Step::Kind::expectation;
  step.play = parseCommand(line, expectations());
  if (step.play) return step;
  if (line.accept("expect")) line.fail("one of " + expectationNames());
  line.fail("an action such as front or launch, or expect");
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const auto start = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

/// Takes the first line off the text, without its line end.
std::string_view takeLine(std::string_view& text) {
  const auto end = text.find('\n');
  auto line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::expected<std::optional<Step>, LineError> parseLine(std::string_view line, std::size_t number) {
  if (line.size() > maximumLineLength) {
    // Columns count characters.
    const auto column = 1 + std::ranges::count_if(line.substr(0, maximumLineLength),
                                                  [](char c) { return (c & 0xC0) != 0x80; });
    return std::unexpected{LineError{static_cast<std::size_t>(column),
                                     "expected the end of the line after " +
                                         std::to_string(maximumLineLength) + " bytes at most"}};
  }
  const auto tokens = tokenize(line);
  if (!tokens) return std::unexpected{tokens.error()};
  if (tokens->tokens.empty()) {
    if (!tokens->comment) return std::nullopt;
    return Step{.line = number,
                .column = 1,
                .kind = Step::Kind::comment,
                .text = std::string{trimmed(*tokens->comment)},
                .play = {}};
  }
  try {
    auto step = parseTokens(*tokens, number);
    const auto commentLength = tokens->comment ? tokens->comment->size() + 1 : 0;
    step.text = trimmed(line.substr(0, line.size() - commentLength));
    return step;
  } catch (const LineError& error) {
    return std::unexpected{error};
  }
}

std::expected<Scenario, std::vector<ScenarioError>> parseScenario(std::string name,
                                                                  std::string_view text) {
  Scenario scenario{.name = std::move(name), .steps = {}};
  std::vector<ScenarioError> errors;
  for (std::size_t number = 1; !text.empty(); ++number) {
    auto step = parseLine(takeLine(text), number);
    if (!step) {
      errors.push_back({number, step.error().column, step.error().message});
    } else if (*step) {
      scenario.steps.push_back(**std::move(step));
    }
  }
  const bool onlyComments = std::ranges::all_of(
      scenario.steps, [](const Step& step) { return step.kind == Step::Kind::comment; });
  if (errors.empty() && onlyComments) {
    errors.push_back({0, 0, "expected a scenario, found no action and no expectation"});
  }
  if (!errors.empty()) return std::unexpected{std::move(errors)};
  return scenario;
}

}  // namespace keyrow::sim
