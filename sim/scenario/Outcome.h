#pragma once

#include <string>
#include <string_view>

namespace keyrow::sim {

/// How playing one line went.
struct Outcome {
  enum class Kind {
    done,
    /// An expectation that does not hold.
    unmet,
    /// An action that cannot be carried out as things stand, or was not meant.
    unplayable,
    /// An action that would cause so much that it was stopped in the middle. What it was played
    /// on is good for nothing more.
    endless,
  };

  Kind kind = Kind::done;
  /// What was expected and what was there; empty when done.
  std::string message;
};

Outcome unmet(std::string message);
Outcome unplayable(std::string message);

/// An outcome "expected ..., but it is ..." when the two differ.
Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual);

}  // namespace keyrow::sim
