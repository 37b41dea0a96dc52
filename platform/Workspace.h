#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// The applications on this Mac (`NSWorkspace`).
class Workspace : public Port {
 public:
  /// The frontmost application's bundle identifier; absent when no application is
  /// frontmost or when it has no identifier.
  virtual std::optional<std::string> frontmostBundleIdentifier() = 0;

  /// Whether an application with this bundle identifier is installed
  /// (`URLForApplicationWithBundleIdentifier`).
  virtual bool isApplicationInstalled(std::string_view bundleIdentifier) = 0;

  /// Runs `handler` each time an application becomes frontmost
  /// (`NSWorkspaceDidActivateApplicationNotification`), on the posting thread, which
  /// is the main thread.
  virtual ObserverToken observeActivation(std::function<void()> handler) = 0;
};

}  // namespace keyrow
