#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
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

/// The folders that people look for applications in.
NSArray<NSURL*>* applicationFolders() {
  NSMutableArray<NSURL*>* const folders = [NSMutableArray array];
  for (NSString* path in NSSearchPathForDirectoriesInDomains(NSAllApplicationsDirectory,
                                                             NSAllDomainsMask, YES)) {
    [folders addObject:[NSURL fileURLWithPath:path]];
  }
  return folders;
}

class MacWorkspace final : public Workspace {
 public:
  std::optional<std::string> frontmostBundleIdentifier() override {
    return optionalText(NSWorkspace.sharedWorkspace.frontmostApplication.bundleIdentifier);
  }

  bool isApplicationInstalled(std::string_view bundleIdentifier) override {
    return [NSWorkspace.sharedWorkspace
               URLForApplicationWithBundleIdentifier:nsString(bundleIdentifier)] != nil;
  }

  std::vector<NamedApplication> applications() override {
    std::vector<NamedApplication> applications;
    const auto add = [&](NSString* name, NSString* identifier) {
      if (!name || !identifier) return;
      applications.push_back({.name = utf8Text(name), .bundleIdentifier = utf8Text(identifier)});
    };
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
      if (application.activationPolicy == NSApplicationActivationPolicyProhibited) continue;
      add(application.localizedName, application.bundleIdentifier);
    }
    NSFileManager* const files = NSFileManager.defaultManager;
    for (NSURL* folder in applicationFolders()) {
      // What macOS keeps elsewhere and only links here can count as hidden.
      for (NSURL* file in [files contentsOfDirectoryAtURL:folder
                               includingPropertiesForKeys:nil
                                                  options:0
                                                    error:nil]) {
        NSString* const path = file.path;
        if (!path || ![file.pathExtension isEqualToString:@"app"]) continue;
        // The Finder shows the extension where the user wants that.
        NSString* const name = [files displayNameAtPath:path];
        add([name.pathExtension isEqualToString:@"app"] ? name.stringByDeletingPathExtension : name,
            [NSBundle bundleWithURL:file].bundleIdentifier);
      }
    }
    return applications;
  }

  std::optional<std::string> bundleIdentifier(std::string_view atPath) override {
    return optionalText([NSBundle bundleWithPath:nsString(atPath)].bundleIdentifier);
  }

  std::optional<std::string> bundleIdentifierAsSpelled(std::string_view bundleIdentifier) override {
    NSURL* const url = [NSWorkspace.sharedWorkspace
        URLForApplicationWithBundleIdentifier:nsString(bundleIdentifier)];
    return url ? optionalText([NSBundle bundleWithURL:url].bundleIdentifier) : std::nullopt;
  }

  ObserverToken observeActivation(std::function<void()> handler) override {
    return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                               NSWorkspaceDidActivateApplicationNotification, /*queue=*/nil,
                               std::move(handler));
  }

  ObserverToken observeWillSleep(std::function<void()> handler) override {
    return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                               NSWorkspaceWillSleepNotification, NSOperationQueue.mainQueue,
                               std::move(handler));
  }

  ObserverToken observeDidWake(std::function<void()> handler) override {
    return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                               NSWorkspaceDidWakeNotification, NSOperationQueue.mainQueue,
                               std::move(handler));
  }

  bool isSessionActive() override {
    // Without a dictionary there is no window server, and nobody else to have the screen.
    const auto session = CFRef<CFDictionaryRef>::adopt(CGSessionCopyCurrentDictionary());
    if (!session) return true;
    const void* const isOnConsole = CFDictionaryGetValue(session.get(), kCGSessionOnConsoleKey);
    return !isOnConsole || isOnConsole == kCFBooleanTrue;
  }

  ObserverToken observeSessionDidResignActive(std::function<void()> handler) override {
    return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                               NSWorkspaceSessionDidResignActiveNotification,
                               NSOperationQueue.mainQueue, std::move(handler));
  }

  ObserverToken observeSessionDidBecomeActive(std::function<void()> handler) override {
    return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                               NSWorkspaceSessionDidBecomeActiveNotification,
                               NSOperationQueue.mainQueue, std::move(handler));
  }

  std::vector<std::unique_ptr<RunningApplication>> runningApplications(
      std::string_view bundleIdentifier) override {
    std::vector<std::unique_ptr<RunningApplication>> applications;
    for (NSRunningApplication* application in [NSRunningApplication
             runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier)]) {
      applications.push_back(std::make_unique<MacRunningApplication>(application));
    }
    return applications;
  }

  void openApplication(std::string_view path) override {
    NSWorkspaceOpenConfiguration* const configuration =
        [NSWorkspaceOpenConfiguration configuration];
    configuration.activates = YES;
    [NSWorkspace.sharedWorkspace openApplicationAtURL:[NSURL fileURLWithPath:nsString(path)]
                                        configuration:configuration
                                    completionHandler:nil];
  }

  bool isURL(std::string_view text) override {
    // To NSURL an empty text is one that leads where its base does.
    if (text.empty()) return false;
    if (@available(macOS 14.0, *)) {
      return [NSURL URLWithString:nsString(text) encodingInvalidCharacters:NO] != nil;
    }
    // Before macOS 14 this one is as strict.
    return [NSURL URLWithString:nsString(text)] != nil;
  }

  bool openURL(std::string_view url) override {
    NSURL* const parsed = url.empty() ? nil : [NSURL URLWithString:nsString(url)];
    return parsed && [NSWorkspace.sharedWorkspace openURL:parsed];
  }
};

}  // namespace

std::unique_ptr<Workspace> makeWorkspace() { return std::make_unique<MacWorkspace>(); }

}  // namespace keyrow::macos
