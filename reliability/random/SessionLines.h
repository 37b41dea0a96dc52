#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace keyrow::reliability {

/// What happens in a session: lines of the scenario language.
struct SessionLines {
  std::vector<std::string> lines;
};

/// How many lines a session had.
struct PlayedLines {
  std::size_t count = 0;
  /// Of them, those after which a chosen mode was promised.
  std::size_t promisedCount = 0;
};

/// Prints the session as a scenario that can be played.
void showValue(const SessionLines& session, std::ostream& out);

/// Plays a session drawn at random, with RapidCheck, from everything that a user and a
/// system can do, mixed with faults. For use within a property: a broken promise fails it.
PlayedLines playRandomSession();

}  // namespace keyrow::reliability
