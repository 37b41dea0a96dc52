#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Port.h"
#include "platform/Registration.h"
#include "platform/RunningApplication.h"

namespace keyrow {

/// An application by the name under which people know it.
struct NamedApplication {
  std::string name;
  std::string bundleIdentifier;
};

/// The applications on this Mac (`NSWorkspace`).
class Workspace : public Port {
 public:
  /// The frontmost application's bundle identifier; absent when no application is
  /// frontmost or when it has no identifier.
  virtual std::optional<std::string> frontmostBundleIdentifier() = 0;

  /// Whether an application with this bundle identifier is installed
  /// (`URLForApplicationWithBundleIdentifier`).
  virtual bool isApplicationInstalled(std::string_view bundleIdentifier) = 0;

  /// The applications that run as others do, and those in the Applications folders of the system,
  /// the Mac and the user. One that runs and lies there is listed twice, and can run under another
  /// name than the Finder shows.
  virtual std::vector<NamedApplication> applications() = 0;

  /// The bundle identifier of the application at this path; absent where there is none.
  virtual std::optional<std::string> bundleIdentifier(std::string_view atPath) = 0;

  /// A bundle identifier as its application spells it: the system finds one in any case
  /// (`URLForApplicationWithBundleIdentifier`). Absent where there is none.
  virtual std::optional<std::string> bundleIdentifierAsSpelled(
      std::string_view bundleIdentifier) = 0;

  /// Runs `handler` each time an application becomes frontmost
  /// (`NSWorkspaceDidActivateApplicationNotification`), on the posting thread, which
  /// is the main thread.
  virtual ObserverToken observeActivation(std::function<void()> handler) = 0;

  /// Runs `handler` on the main queue before the Mac sleeps
  /// (`NSWorkspaceWillSleepNotification`).
  virtual ObserverToken observeWillSleep(std::function<void()> handler) = 0;

  /// Runs `handler` on the main queue after the Mac has woken up
  /// (`NSWorkspaceDidWakeNotification`).
  virtual ObserverToken observeDidWake(std::function<void()> handler) = 0;

  /// Whether this user's session has the screen and the keyboards (`kCGSessionOnConsoleKey`).
  virtual bool isSessionActive() = 0;

  /// Runs `handler` on the main queue after another user's session has come in its place, or
  /// before (`NSWorkspaceSessionDidResignActiveNotification`).
  virtual ObserverToken observeSessionDidResignActive(std::function<void()> handler) = 0;

  /// Runs `handler` on the main queue when this user's session is back
  /// (`NSWorkspaceSessionDidBecomeActiveNotification`).
  virtual ObserverToken observeSessionDidBecomeActive(std::function<void()> handler) = 0;

  /// The running applications of this user with this bundle identifier, this one among them.
  virtual std::vector<std::unique_ptr<RunningApplication>> runningApplications(
      std::string_view bundleIdentifier) = 0;

  /// Opens the application at this path, or brings it to the front
  /// (`openApplicationAtURL:configuration:completionHandler:`, with `activates` set);
  /// nothing happens where there is none.
  virtual void openApplication(std::string_view path) = 0;

  /// Whether the text is a URL (`URLWithString:`).
  virtual bool isURL(std::string_view text) = 0;

  /// Opens a URL (`openURL:`); false when nothing opens it, or when it is no URL.
  virtual bool openURL(std::string_view url) = 0;
};

}  // namespace keyrow
