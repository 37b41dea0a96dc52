#include "desk/Session.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <expected>
#include <optional>
#include <utility>

#include "desk/Snapshot.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::desk {

namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sim::Outcome;
using sim::Step;

/// The longest wait that one line can hold.
constexpr std::chrono::nanoseconds longestWait = 1000h;

const sim::Wait* waitOf(const Step& step) {
  const auto* action = step.action();
  return action ? std::get_if<sim::Wait>(action) : nullptr;
}

/// A wait as one would type it, such as "wait 1.3s".
std::string waitLine(std::chrono::nanoseconds duration) {
  struct Unit {
    std::chrono::nanoseconds length;
    std::string_view name;
  };
  static constexpr std::array<Unit, 4> units{{{1h, "h"}, {1min, "min"}, {1s, "s"}, {1ms, "ms"}}};
  for (const auto& [length, name] : units) {
    if (duration % length == 0ns) {
      return "wait " + std::to_string(duration / length) + std::string{name};
    }
    // Tenths of a second are what the page waits.
    if (length == 1s && duration > 1s && duration % 100ms == 0ns) {
      const auto tenths = duration / 100ms;
      return "wait " + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "s";
    }
  }
  return "wait " + std::to_string(duration.count()) + "ns";
}

json refusal(const std::string& line, std::size_t column, const std::string& message) {
  return {{"line", line}, {"column", column}, {"message", message}};
}

std::string_view kindOf(const Step& step) {
  if (step.isComment()) return "comment";
  return step.isExpectation() ? "expectation" : "action";
}

bool isPlayed(const Outcome& outcome) {
  return outcome.kind == Outcome::Kind::done || outcome.kind == Outcome::Kind::unmet;
}

/// The lines, parsed; the error is the first that does not parse, as a refusal.
std::expected<std::vector<Step>, json> parse(const std::vector<std::string>& lines) {
  std::vector<Step> steps;
  for (const auto& line : lines) {
    const auto step = sim::parseLine(line, 1);
    if (!step) return std::unexpected{refusal(line, step.error().column, step.error().message)};
    if (*step) steps.push_back(**step);
  }
  return steps;
}

}  // namespace

std::string lineOf(const Step& step) {
  if (!step.isComment()) return step.text;
  return step.text.empty() ? "#" : "# " + step.text;
}

Session::Session() { start(); }

json Session::blank() {
  sim::Stage stage;
  return snapshot(stage);
}

json Session::play(const PlayRequest& request) {
  auto steps = parse(request.lines);
  auto from = std::min(request.kept, played_.size());
  json answer{{"from", from}, {"frames", json::array()}, {"refused", nullptr}};
  if (!steps) {
    // Not even what was to be taken back is.
    answer["from"] = played_.size();
    answer["refused"] = std::move(steps.error());
    return answer;
  }
  if (from < played_.size()) takeBackTo(from);

  auto& frames = answer["frames"];
  for (const auto& step : *steps) {
    if (isLengthening(step, request)) {
      const auto duration = waitOf(played_.back())->duration + waitOf(step)->duration;
      auto joined = **sim::parseLine(waitLine(duration), 1);
      const auto outcome = sim::lengthenWait(waitOf(step)->duration, *stage_);
      if (!isPlayed(outcome)) {
        answer["refused"] = refusal(step.text, 1, outcome.message);
        takeBackTo(played_.size());
        break;
      }
      played_.back() = std::move(joined);
      last_ = beforeLast_;
      if (frames.empty()) {
        answer["from"] = --from;
      } else {
        frames.erase(frames.size() - 1);
      }
      frames.push_back(frameOf(played_.back(), outcome));
      continue;
    }
    if (played_.size() >= maximumLineCount) {
      answer["refused"] = refusal(lineOf(step), 1, "a session holds no more lines; start again");
      break;
    }
    events_ = json::array();
    startedAt_ = sim::TimelinePrinter::dateAndTime(stage_->mac.scheduler.now());
    const auto outcome = sim::playStep(step, *stage_);
    if (!isPlayed(outcome)) {
      answer["refused"] = refusal(lineOf(step), step.column, outcome.message);
      // Something of it may have been carried out.
      takeBackTo(played_.size());
      break;
    }
    played_.push_back(step);
    frames.push_back(frameOf(step, outcome));
  }
  return answer;
}

void Session::start() {
  stage_ = std::make_unique<sim::Stage>();
  stage_->mac.timeline.setListener([this](const sim::TimelineEvent& event) {
    events_.push_back({{"at", sim::TimelinePrinter::dateAndTime(event.time)},
                       {"kind", sim::wordOf(event.kind)},
                       {"text", sim::textOf(event)}});
  });
  last_ = snapshot(*stage_);
  beforeLast_ = last_;
}

void Session::takeBackTo(std::size_t count) {
  auto kept = std::exchange(played_, {});
  kept.resize(std::min(count, kept.size()));
  start();
  for (auto& step : kept) {
    const bool isAmongTheLastTwo = played_.size() + 2 >= kept.size();
    events_ = json::array();
    startedAt_ = sim::TimelinePrinter::dateAndTime(stage_->mac.scheduler.now());
    sim::playStep(step, *stage_);
    played_.push_back(step);
    if (!isAmongTheLastTwo) continue;
    beforeLast_ = std::exchange(last_, snapshot(*stage_));
  }
}

bool Session::isLengthening(const Step& step, const PlayRequest& request) const {
  const auto* wait = waitOf(step);
  const auto* before = played_.empty() ? nullptr : waitOf(played_.back());
  return request.joinsWaits && wait && before && wait->duration + before->duration <= longestWait;
}

json Session::frameOf(const Step& step, const Outcome& outcome) {
  beforeLast_ = std::exchange(last_, snapshot(*stage_));
  return {{"line", lineOf(step)},
          {"kind", kindOf(step)},
          {"at", startedAt_},
          {"events", events_},
          {"failure", outcome.message.empty() ? json{} : json(outcome.message)},
          {"change", json::diff(beforeLast_, last_)}};
}

}  // namespace keyrow::desk
