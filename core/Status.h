#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/FnState.h"
#include "platform/InputMonitoring.h"
#include "platform/PropertyValue.h"

namespace keyrow {

class AppSettings;
class KeyboardFnStates;
class NamedSettings;
class StoredFnStates;

/// How things stand, as Keyrow tells others.
struct Status {
  struct Keyboard {
    /// As the keyboard calls itself, or of which kind it is.
    std::string name;
    /// Its vendor and product numbers; absent for one that lacks either.
    std::optional<std::string> numbers;
    /// Whether its top row may be translated: not built in, and not Apple's.
    bool isTranslatable = false;

    friend bool operator==(const Keyboard&, const Keyboard&) = default;
  };

  /// What only a running Keyrow knows.
  struct Running {
    std::int64_t processIdentifier = 0;
    bool isTrusted = false;
    InputMonitoringAccess inputMonitoring = InputMonitoringAccess::unknown;
    /// Whether the event tap works.
    bool hasEventTap = false;
    /// Whether this user's session is in front.
    bool isSessionActive = true;
    /// Whether it listens to the keyboards, and so knows which are connected.
    bool seesKeyboards = false;
    /// Whether another program had one of them to itself when it began to listen.
    bool isKeyboardSeized = false;
    /// Those that are connected; none where it does not listen.
    std::vector<Keyboard> keyboards;

    friend bool operator==(const Running&, const Running&) = default;
  };

  /// Where the mode in force comes from.
  enum class Source { unknown, global, override_ };

  /// The mode that the keyboard holds; absent where that cannot be read.
  std::optional<FnState> mode;
  /// Of what Keyrow knows, where that comes from.
  Source source = Source::unknown;
  /// The bundle identifier of the application in front; absent where there is none.
  std::optional<std::string> application;

  // What is stored.

  std::optional<FnState> global;
  std::map<std::string, FnState, std::less<>> overrides;
  /// The modes of keyboards that have their own, by their pair of numbers.
  std::map<std::string, FnState, std::less<>> keyboardModes;
  /// Whether the top row of keyboards that are not Apple's is translated at all.
  bool translatesTopRows = false;
  /// The settings of the window, by the names and in the words of `NamedSettings`.
  std::map<std::string, std::string, std::less<>> settings;

  /// Absent where Keyrow does not run, or does not answer.
  std::optional<Running> running;

  friend bool operator==(const Status&, const Status&) = default;
};

/// What is stored, of all that; nothing else is known there.
Status storedStatus(const StoredFnStates& storedFnStates, const KeyboardFnStates& keyboardFnStates,
                    const AppSettings& settings, const NamedSettings& namedSettings);

/// The same in a notification, and back; what is missing there, or is something else, is absent.
PropertyDictionary propertyDictionary(const Status& status);
Status statusFrom(const PropertyDictionary& dictionary);

}  // namespace keyrow
