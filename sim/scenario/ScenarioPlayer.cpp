#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {

PlayResult& PlayResult::operator+=(const PlayResult& other) {
  metExpectations += other.metExpectations;
  unmetExpectations += other.unmetExpectations;
  unplayableLines += other.unplayableLines;
  return *this;
}

Outcome playStep(const Step& step, Stage& stage) {
  if (step.kind == Step::Kind::comment) return {};
  if (step.kind == Step::Kind::expectation) return step.play(stage);
  stage.beginAction();
  auto outcome = step.play(stage);
  stage.mac.scheduler.runReady();
  return outcome;
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
    if (outcome.kind == Outcome::Kind::unplayable) {
      ++result.unplayableLines;
      break;
    }
    if (step.kind != Step::Kind::expectation) continue;
    ++(outcome.kind == Outcome::Kind::done ? result.metExpectations : result.unmetExpectations);
  }
  return result;
}

}  // namespace keyrow::sim
