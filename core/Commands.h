#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/KeyboardFnStates.h"
#include "core/ModeChanges.h"
#include "core/NamedSettings.h"
#include "core/Request.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Carries out the requests that change something, and refuses what cannot be done. Main thread
/// only.
class Commands {
 public:
  struct Uses {
    ModeChanges& modes;
    KeyboardFnStates& keyboardFnStates;
    NamedSettings& namedSettings;
    Workspace& workspace;
  };

  explicit Commands(const Uses& uses) : use_{uses} {}

  /// Why nothing was done, in words for people; absent when it was.
  std::optional<std::string> carryOut(const Request& request);

  /// Why a keyboard of Apple can have no mode of its own.
  static constexpr std::string_view appleKeyboards =
      "Apple's keyboards have one mode in hardware, which all of them share.";

  /// The value of a request that lets a keyboard follow the others again.
  static constexpr std::string_view follow = "follow";

 private:
  std::optional<std::string> setOverride(const Request& request);
  std::optional<std::string> setKeyboard(const Request& request);
  std::optional<std::string> setSetting(const Request& request);

  const Uses use_;
};

}  // namespace keyrow
