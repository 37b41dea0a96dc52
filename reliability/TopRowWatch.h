#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "sim/scenario/Scenario.h"
#include "sim/scenario/Stage.h"

namespace keyrow::reliability {

/// Watches what becomes of the top row of a keyboard that is not Apple's and has a mode of its own:
/// where that is F1 to F12 the key reaches an application, and where it is media keys it does not,
/// whatever mode all else is in. That holds where Keyrow sees the key, and can tell the keyboard.
class TopRowWatch {
 public:
  explicit TopRowWatch(sim::Stage& stage);

  /// Before a line.
  void look(const sim::Action& action);

  /// What is wrong after it, or empty. `isDone`: it was carried out to its end.
  std::string problem(bool isDone);

 private:
  struct Promise {
    std::string key;
    FnState mode;
  };

  std::optional<Promise> promiseOf(const sim::Keys& what);
  bool isSeen(const sim::SimulatedKeyboard& keyboard);

  sim::Stage& stage_;
  /// Of the line that is being played.
  std::optional<Promise> promise_;
  /// When the latest input was sent, in mach ticks, who was the first to send one then, and
  /// whether another keyboard has sent one in the same moment.
  std::uint64_t lastInputTime_ = 0;
  std::shared_ptr<const sim::SimulatedKeyboard> lastKeyboard_;
  bool areInputsMixed_ = false;
  const Registration inputs_;
};

}  // namespace keyrow::reliability
