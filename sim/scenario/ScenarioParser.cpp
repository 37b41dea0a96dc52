#include "sim/scenario/ScenarioParser.h"

#include <algorithm>
#include <utility>

#include "sim/scenario/Language.h"
#include "sim/scenario/ScenarioFile.h"

namespace keyrow::sim {

namespace {

/// Whether this is what the line begins with.
template <typename Parsed>
bool begins(LineReader& line, const Word<Parsed>& word) {
  const auto blank = word.words.find(' ');
  auto attempt = line;
  if (!attempt.accept(word.words.substr(0, blank))) return false;
  if (blank != std::string_view::npos && !attempt.accept(word.words.substr(blank + 1))) {
    return false;
  }
  line = attempt;
  return true;
}

std::optional<Action> parseAction(LineReader& line) {
  for (const auto& part : language()) {
    for (const auto& word : part.actions) {
      if (begins(line, word)) return word.parse(line);
    }
  }
  return std::nullopt;
}

/// The word that an expectation begins with; fails when there is none.
const ExpectationWord& expectationWord(LineReader& line) {
  std::string names;
  for (const auto& part : language()) {
    for (const auto& word : part.expectations) {
      if (begins(line, word)) return word;
      if (!names.empty()) names += ", ";
      names += word.words;
    }
  }
  line.fail("one of " + names);
}

/// Takes the word of an event where nothing about it follows: any event of that kind.
std::optional<TimelineEvent::Kind> bareEvent(LineReader& line) {
  for (int index = 0; index < static_cast<int>(TimelineEvent::kindCount); ++index) {
    const auto kind = static_cast<TimelineEvent::Kind>(index);
    auto attempt = line;
    if (!attempt.accept(wordOf(kind))) continue;
    if (!attempt.atEnd() && !attempt.at("then") && !attempt.atTimes()) continue;
    line = attempt;
    return kind;
  }
  return std::nullopt;
}

/// Takes an event, or what asks how things stand.
Expectation parseAnything(LineReader& line) {
  if (const auto kind = bareEvent(line)) return EventPattern{*kind, {}};
  return expectationWord(line).parse(line);
}

/// Takes an event; fails for what only asks how things stand.
EventPattern parseEvent(LineReader& line) {
  auto expectation = parseAnything(line);
  if (auto* event = std::get_if<EventPattern>(&expectation)) return std::move(*event);
  line.failBefore("something that happens, such as: hardware special -> standard");
}

/// Takes what follows "expect".
Check parseExpectation(LineReader& line) {
  constexpr std::uint64_t mostTimes = 1'000'000;
  EventExpectation events;
  if (line.accept("no")) {
    events.inOrder.push_back(parseEvent(line));
    events.times = 0;
  } else {
    auto expectation = parseAnything(line);
    if (auto* check = std::get_if<Check>(&expectation)) return std::move(*check);
    events.inOrder.push_back(std::get<EventPattern>(std::move(expectation)));
    events.times = line.maybeTimes(mostTimes);
    while (!events.times && line.accept("then")) events.inOrder.push_back(parseEvent(line));
  }
  return [events](Stage& stage) { return events.check(stage.recentTimeline()); };
}

Step parseTokens(const TokenizedLine& tokens, std::size_t number) {
  LineReader line{tokens};
  Step step{.line = number, .column = tokens.tokens.front().column, .text = {}, .content = {}};
  if (auto action = parseAction(line)) {
    step.content = *std::move(action);
  } else if (line.accept("expect")) {
    step.content = parseExpectation(line);
  } else {
    line.fail("an action such as front or launch, or expect");
  }
  line.end();
  return step;
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
                .text = std::string{trimmed(*tokens->comment)},
                .content = Step::Comment{}};
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
  const bool onlyComments = std::ranges::all_of(scenario.steps, &Step::isComment);
  if (errors.empty() && onlyComments) {
    errors.push_back({0, 0, "expected a scenario, found no action and no expectation"});
  }
  if (!errors.empty()) return std::unexpected{std::move(errors)};
  return scenario;
}

std::expected<Scenario, std::vector<ScenarioError>> readScenario(const std::string& path) {
  const auto text = readScenarioFile(path);
  if (!text) return std::unexpected{std::vector{ScenarioError{0, 0, text.error()}}};
  return parseScenario(path, *text);
}

}  // namespace keyrow::sim
