#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PropertyValue.h"

namespace keyrow {

/// How the command `keyrow` and the running Keyrow talk: one posts a request, the other an answer,
/// as distributed notifications of this user's session with `appIdentifier` as their object.
namespace requestNotification {
inline constexpr std::string_view request = "app.keyrow.Keyrow.request";
inline constexpr std::string_view answer = "app.keyrow.Keyrow.answer";
/// Something has changed; posted only while somebody watches.
inline constexpr std::string_view change = "app.keyrow.Keyrow.change";
}  // namespace requestNotification

/// A request older than this is dropped: whoever posted it has been told that nobody answers.
inline constexpr std::chrono::seconds requestLifetime{1};

/// For how long whoever has asked to watch is told of changes.
inline constexpr std::chrono::seconds watchLifetime{10};

/// What the running Keyrow is asked to do.
struct Request {
  enum class Kind {
    /// Questions: `Status` is the answer.
    status,
    /// The same, and changes are announced for a while.
    watch,
    /// `value` is a mode.
    setMode,
    toggleMode,
    /// `subject` is an application's bundle identifier, `value` a mode.
    setOverride,
    clearOverride,
    /// `subject` is a keyboard's pair of numbers, `value` a mode or `Commands::follow`.
    setKeyboard,
    /// `subject` is a setting's name, `value` as people write it, or
    /// `NamedSettings::defaultValue`.
    setSetting,
  };

  /// Tells this request from all others.
  std::string number;
  /// When it was made: time since boot (`Clock::uptime`).
  std::chrono::nanoseconds time{0};
  Kind kind = Kind::status;
  std::string subject{};
  std::string value{};

  bool isQuestion() const { return kind == Kind::status || kind == Kind::watch; }

  friend bool operator==(const Request&, const Request&) = default;
};

/// What a request is in a notification, and back; absent for what is no request.
PropertyDictionary userInfo(const Request& request);
std::optional<Request> requestFrom(const std::optional<PropertyDictionary>& userInfo);

/// What Keyrow answers.
struct Answer {
  /// Of the requests that it answers.
  std::vector<std::string> numbers;
  /// Why nothing was done; absent when it was, or when it was a question.
  std::optional<std::string> problem{};
  /// How things stand now: see `Status`. Absent in the first of two answers to a command, which
  /// says that it is being carried out, however long the keyboard takes.
  std::optional<PropertyDictionary> status{};

  bool answers(std::string_view number) const;
};

/// The same for an answer.
PropertyDictionary userInfo(const Answer& answer);
std::optional<Answer> answerFrom(const std::optional<PropertyDictionary>& userInfo);

}  // namespace keyrow
