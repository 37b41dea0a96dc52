#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Status.h"

namespace keyrow::tool {

/// What is known besides, without Keyrow.
struct Surroundings {
  /// Some Keyrow runs.
  bool isKeyrowRunning = false;
  /// It does not answer.
  bool isKeyrowSilent = false;
  bool isSecureInputOn = false;
  /// Absent where macOS does not tell.
  std::optional<std::string> secureInputHolder{};

  friend bool operator==(const Surroundings&, const Surroundings&) = default;
};

/// One line of a report: what, and how that is.
struct Fact {
  std::string what;
  std::string how;

  friend bool operator==(const Fact&, const Fact&) = default;
};

/// The status for people.
std::vector<Fact> facts(const Status& status, const Surroundings& surroundings);

/// The settings, for whoever watches them change.
std::vector<Fact> settingFacts(const Status& status);

/// The status for programs, as one line of JSON.
std::string jsonText(const Status& status, const Surroundings& surroundings);

/// Adds a text where it is not there yet.
void addOnce(std::vector<std::string>& texts, std::string text);

/// The mode that a keyboard has as its own; absent for one that follows.
std::optional<FnState> ownMode(const Status& status, const Status::Keyboard& keyboard);

/// Whether it tells which keyboards are connected.
bool knowsKeyboards(const Status& status);

/// The overrides, one a line; the same for the keyboards and their modes.
std::vector<std::string> overrideLines(const Status& status);
std::vector<std::string> keyboardLines(const Status& status);

}  // namespace keyrow::tool
