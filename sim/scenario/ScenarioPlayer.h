#pragma once

#include <chrono>

#include "sim/scenario/Outcome.h"
#include "sim/scenario/Scenario.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// Is told how a scenario goes, as it goes.
class PlayListener {
 public:
  virtual ~PlayListener() = default;

  /// A scenario begins.
  virtual void willPlay(const Scenario& scenario) = 0;
  /// A line is about to be played; comments, too.
  virtual void willPlay(const Step& step, const SimulatedMac& mac) = 0;
  /// Something observable happened on the machine.
  virtual void didHappen(const TimelineEvent& event) = 0;
  /// A line was played.
  virtual void didPlay(const Scenario& scenario, const Step& step, const Outcome& outcome) = 0;
};

/// What came of a scenario, or of several.
struct PlayResult {
  int metExpectations = 0;
  int unmetExpectations = 0;
  /// Lines that could not be carried out; a scenario ends at the first.
  int unplayableLines = 0;

  PlayResult& operator+=(const PlayResult& other);
  /// Counts what came of a line.
  void count(const Step& step, const Outcome& outcome);
};

/// Plays one line on the stage.
Outcome playStep(const Step& step, Stage& stage);

/// Lets time go on as if it belonged to the wait that was played last: expectations look at what
/// came of both.
Outcome lengthenWait(std::chrono::nanoseconds duration, Stage& stage);

/// Plays a scenario on a fresh stage. An expectation that does not hold does not end it.
PlayResult playScenario(const Scenario& scenario, PlayListener& listener);

}  // namespace keyrow::sim
