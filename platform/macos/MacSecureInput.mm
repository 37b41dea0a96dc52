#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <memory>
#include <optional>
#include <string>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/IOObject.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacSecureInput final : public SecureInput {
 public:
  bool isEnabled() override { return IsSecureEventInputEnabled(); }

  std::optional<std::string> holder() override {
    const auto root = IOObject::adopt(IORegistryGetRootEntry(kIOMainPortDefault));
    const auto users = CFRef<CFTypeRef>::adopt(IORegistryEntryCreateCFProperty(
        root.get(), CFSTR("IOConsoleUsers"), kCFAllocatorDefault, kNilOptions));
    NSArray* const sessions = (__bridge NSArray*)users.get();
    if (![sessions isKindOfClass:NSArray.class]) return std::nullopt;
    for (NSDictionary* session in sessions) {
      if (![session isKindOfClass:NSDictionary.class]) continue;
      // What another user types is not seen here anyway.
      if (![session[@"kCGSSessionOnConsoleKey"] isEqual:@YES]) continue;
      NSNumber* const process = session[@"kCGSSessionSecureInputPID"];
      if (![process isKindOfClass:NSNumber.class]) continue;
      NSRunningApplication* const application =
          [NSRunningApplication runningApplicationWithProcessIdentifier:process.intValue];
      if (application.bundleIdentifier) return utf8Text(application.bundleIdentifier);
      if (application.localizedName) return utf8Text(application.localizedName);
      return "process " + std::to_string(process.intValue);
    }
    return std::nullopt;
  }
};

}  // namespace

std::unique_ptr<SecureInput> makeSecureInput() { return std::make_unique<MacSecureInput>(); }

}  // namespace keyrow::macos
