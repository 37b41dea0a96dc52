#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FnStateController.h"
#include "core/KeyboardDeviceSource.h"
#include "input/KeySettings.h"
#include "input/KeyboardModes.h"
#include "input/TranslatedAction.h"
#include "platform/EventPoster.h"
#include "platform/KeyEvent.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace keyrow {

/// What a key does.
enum class KeyStep { press, repeat, release };

/// Why an event of a top-row key is translated, or passes.
enum class TranslationReason {
  settingDisabled,
  unsupportedEventType,
  sourceUnavailable,
  sourceNotEligible,
  noPublicMediaMapping,
  fnStateUnavailable,
  translate,
  passthrough,
};

/// The modes that a top row may go by.
struct TopRowModes {
  /// The keyboard's own, which takes the place of the hardware's; absent where it has none.
  std::optional<FnState> keyboard{};
  /// The hardware's; absent where it cannot be read.
  std::optional<FnState> hardware{};
};

/// What was decided about one event of a top-row key, and why.
struct TranslationEvaluation {
  /// "F1" to "F12".
  std::string_view functionKeyName;
  /// Null where none was determined.
  const TranslatedAction* action = nullptr;
  /// Whether the event is to be swallowed and the action performed.
  bool shouldTranslate = false;
  TranslationReason why = TranslationReason::settingDisabled;
  /// Of the event (`keyEventType`).
  std::uint32_t eventType = 0;
  /// Whether Fn was held.
  bool isFnPressed = false;
  /// Whether the mode that decided was the keyboard's own.
  bool isByKeyboardMode = false;

  /// `why` in the words of the log.
  std::string reason() const;
};

/// Makes the top row of keyboards that are not Apple's follow the function-key mode, or one of the
/// keyboard's own: in the special mode their F keys become the media and system keys of Apple's
/// keyboards.
///
/// Evaluating only reads, from any thread; whatever is performed goes to the main queue. What
/// media keys do waits there in one list, so that whoever ends the application can still post it.
class ExternalKeyboardFunctionRowMapper {
 public:
  /// What it uses. `inputLog` is the logger of the "input" category.
  struct Uses {
    FnStateController& fnStateController;
    KeyboardModes& keyboardModes;
    EventPoster& eventPoster;
    Workspace& workspace;
    MainQueue& mainQueue;
    Logger& inputLog;
  };

  explicit ExternalKeyboardFunctionRowMapper(const Uses& uses) : use_{uses} {}

  /// Whether an event of this key can come to more than passing without a word. All others
  /// need no keyboard, and need not be evaluated.
  static bool isConcernedWith(std::uint16_t keyCode, const KeySettings::Values& settings);

  /// What comes of one event in these modes, and of nothing else: absent for a key that is not in
  /// the top row. A null source stands for a keyboard that cannot be told.
  static std::optional<TranslationEvaluation> decide(std::uint32_t eventType, const KeyEvent& event,
                                                     const KeyboardDeviceSource* source,
                                                     const KeySettings::Values& settings,
                                                     const TopRowModes& modes);

  /// The same in the keyboard's own mode, or else in the one that the hardware holds. Each is read
  /// only where it matters.
  std::optional<TranslationEvaluation> evaluate(std::uint32_t eventType, const KeyEvent& event,
                                                const KeyboardDeviceSource* source,
                                                const KeySettings::Values& settings);

  /// Performs what has to be done instead of this event, if anything; whether the event is
  /// to be swallowed. With enhanced diagnostics the log tells why.
  bool translateIfNeeded(std::uint32_t eventType, const KeyEvent& event,
                         const KeyboardDeviceSource* source, const KeySettings::Values& settings);

  /// What a key of the top row can become; null for one that becomes nothing, and for all
  /// other keys.
  static const TranslatedAction* action(std::uint16_t keyCode);

  /// Performs what the key at hand does instead: a media key follows it, but only those of
  /// volume and brightness repeat; everything else happens when it goes down.
  void perform(const TranslatedAction& action, KeyStep step);

  /// Presses, repeats or releases a media key (`NX_KEYTYPE_…`, ev_keymap.h).
  void postAuxiliaryKey(std::int32_t keyType, KeyStep step);

  /// Posts the media keys that wait for the main queue, in their order. On the main thread.
  void postWaitingKeys();

  /// Opens the application at this path, or brings it to the front.
  void openApplication(std::string_view path);

  /// Opens a URL; where nothing opens it, the application at a path instead, if there is one.
  void openURL(std::string_view url, std::optional<std::string_view> fallbackApp);

  /// Presses and releases a key with these modifiers (`keyEventFlag`), as a person would.
  void postKeyStroke(std::uint16_t keyCode, std::uint64_t flags);

 private:
  TopRowModes modesFor(const KeyboardDeviceSource& source);

  const Uses use_;

  /// Guards the field below.
  std::mutex waitingLock_;
  std::vector<SystemDefinedEvent> waitingKeys_;
};

}  // namespace keyrow
