#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace keyrow::reliability {

/// What happens in a session: lines of the scenario language.
struct SessionLines {
  std::vector<std::string> lines;
};

/// Prints the session as a scenario that can be played.
void showValue(const SessionLines& session, std::ostream& out);

/// Plays a session drawn at random, with RapidCheck, from everything that a user and a
/// system can do, mixed with faults. For use within a property: a broken promise fails it.
/// Gives how many lines were played.
std::size_t playRandomSession();

}  // namespace keyrow::reliability
