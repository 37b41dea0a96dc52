#include "platform/macos/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"

namespace keyrow::macos {

namespace {

class MacRunningApplication final : public RunningApplication {
 public:
  explicit MacRunningApplication(NSRunningApplication* application) : application_{application} {}

  std::int32_t processIdentifier() override { return application_.processIdentifier; }
  bool isTerminated() override { return application_.terminated; }
  bool terminate() override { return [application_ terminate]; }
  bool forceTerminate() override { return [application_ forceTerminate]; }

 private:
  NSRunningApplication* const application_;
};

}  // namespace

std::optional<std::string> MacWorkspace::frontmostBundleIdentifier() {
  return optionalText(NSWorkspace.sharedWorkspace.frontmostApplication.bundleIdentifier);
}

bool MacWorkspace::isApplicationInstalled(std::string_view bundleIdentifier) {
  return [NSWorkspace.sharedWorkspace
             URLForApplicationWithBundleIdentifier:nsString(bundleIdentifier)] != nil;
}

ObserverToken MacWorkspace::observeActivation(std::function<void()> handler) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceDidActivateApplicationNotification, /*queue=*/nil,
                             std::move(handler));
}

ObserverToken MacWorkspace::observeWillSleep(std::function<void()> handler) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceWillSleepNotification, NSOperationQueue.mainQueue,
                             std::move(handler));
}

ObserverToken MacWorkspace::observeDidWake(std::function<void()> handler) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceDidWakeNotification, NSOperationQueue.mainQueue,
                             std::move(handler));
}

bool MacWorkspace::isSessionActive() {
  // Without a dictionary there is no window server, and nobody else to have the screen.
  const auto session = CFRef<CFDictionaryRef>::adopt(CGSessionCopyCurrentDictionary());
  if (!session) return true;
  const void* const isOnConsole = CFDictionaryGetValue(session.get(), kCGSessionOnConsoleKey);
  return !isOnConsole || isOnConsole == kCFBooleanTrue;
}

ObserverToken MacWorkspace::observeSessionDidResignActive(std::function<void()> handler) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceSessionDidResignActiveNotification,
                             NSOperationQueue.mainQueue, std::move(handler));
}

ObserverToken MacWorkspace::observeSessionDidBecomeActive(std::function<void()> handler) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceSessionDidBecomeActiveNotification,
                             NSOperationQueue.mainQueue, std::move(handler));
}

std::vector<std::unique_ptr<RunningApplication>> MacWorkspace::runningApplications(
    std::string_view bundleIdentifier) {
  std::vector<std::unique_ptr<RunningApplication>> applications;
  for (NSRunningApplication* application in
       [NSRunningApplication runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier)]) {
    applications.push_back(std::make_unique<MacRunningApplication>(application));
  }
  return applications;
}

void MacWorkspace::openApplication(std::string_view path) {
  NSWorkspaceOpenConfiguration* const configuration = [NSWorkspaceOpenConfiguration configuration];
  configuration.activates = YES;
  [NSWorkspace.sharedWorkspace openApplicationAtURL:[NSURL fileURLWithPath:nsString(path)]
                                      configuration:configuration
                                  completionHandler:nil];
}

bool MacWorkspace::isURL(std::string_view text) {
  if (@available(macOS 14.0, *)) {
    return [NSURL URLWithString:nsString(text) encodingInvalidCharacters:NO] != nil;
  }
  // Before macOS 14 this one is as strict.
  return [NSURL URLWithString:nsString(text)] != nil;
}

bool MacWorkspace::openURL(std::string_view url) {
  NSURL* const parsed = [NSURL URLWithString:nsString(url)];
  return parsed && [NSWorkspace.sharedWorkspace openURL:parsed];
}

}  // namespace keyrow::macos
