#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {

namespace {

Outcome perform(const Action& action, Stage& stage) {
  try {
    auto outcome = std::visit([&](const auto& line) { return line.play(stage); }, action);
    stage.mac.scheduler.runReady();
    return outcome;
  } catch (const TooMuchHappens&) {
    return {Outcome::Kind::endless, "this line would cause more than a million events"};
  } catch (const WaitsForConsent& wait) {
    return {Outcome::Kind::endless, wait.what()};
  }
}

}  // namespace

PlayResult& PlayResult::operator+=(const PlayResult& other) {
  metExpectations += other.metExpectations;
  unmetExpectations += other.unmetExpectations;
  unplayableLines += other.unplayableLines;
  return *this;
}

void PlayResult::count(const Step& step, const Outcome& outcome) {
  if (outcome.kind == Outcome::Kind::unmet) {
    ++unmetExpectations;
  } else if (outcome.kind != Outcome::Kind::done) {
    ++unplayableLines;
  } else if (step.isExpectation()) {
    ++metExpectations;
  }
}

Outcome playStep(const Step& step, Stage& stage) {
  if (const auto* action = step.action()) {
    stage.beginAction();
    return perform(*action, stage);
  }
  const auto* check = std::get_if<Check>(&step.content);
  return check ? (*check)(stage) : Outcome{};
}

Outcome lengthenWait(std::chrono::nanoseconds duration, Stage& stage) {
  return perform(Wait{duration}, stage);
}

PlayResult playScenario(const Scenario& scenario, PlayListener& listener) {
  Stage stage;
  stage.mac.timeline.setListener(
      [&listener](const TimelineEvent& event) { listener.didHappen(event); });
  listener.willPlay(scenario);

  PlayResult result;
  for (const auto& step : scenario.steps) {
    listener.willPlay(step, stage.mac);
    const auto outcome = playStep(step, stage);
    listener.didPlay(scenario, step, outcome);
    result.count(step, outcome);
    if (result.unplayableLines > 0) break;
  }
  return result;
}

}  // namespace keyrow::sim
