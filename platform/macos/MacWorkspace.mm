#include "platform/macos/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"

namespace keyrow::macos {

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

}  // namespace keyrow::macos
