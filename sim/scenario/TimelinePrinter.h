#pragma once

#include <chrono>
#include <ostream>
#include <string>

#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {

/// How much of the timeline is printed.
enum class Detail {
  /// Everything that happens.
  timeline,
  /// What went wrong, and nothing else.
  failuresOnly,
};

/// Prints the timeline as a person likes to read it: the time of day on the machine, what
/// the user did, and indented below it what came of that.
class TimelinePrinter final : public PlayListener {
 public:
  TimelinePrinter(std::ostream& out, Detail detail, bool inColour)
      : out_{out}, detail_{detail}, inColour_{inColour} {}

  void willPlay(const Scenario& scenario) override;
  void willPlay(const Step& step, const SimulatedMac& mac) override;
  void didHappen(const TimelineEvent& event) override;
  void didPlay(const Scenario& scenario, const Step& step, const Outcome& outcome) override;

  /// Prints what time it is on the machine.
  void showTime(const SimulatedMac& mac);

  /// Date and time of day, such as: 2024-03-01 08:00:00.000
  static std::string dateAndTime(std::chrono::nanoseconds sinceSwitchedOn);

 private:
  std::string painted(std::string_view style, std::string_view text) const;
  /// The time of day, or as many blanks when it was printed just before. Prints the date first
  /// where it is another one.
  std::string timeColumn(std::chrono::nanoseconds time);

  std::ostream& out_;
  const Detail detail_;
  const bool inColour_;
  bool followsComment_ = false;
  std::string lastTime_;
  std::string lastDate_ = "2024-03-01";
};

}  // namespace keyrow::sim
