#import <AppKit/AppKit.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "core/AppIdentifier.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
#include "tool/Tool.h"

namespace {

/// The application that this program lies in: `Keyrow.app/Contents/Helpers/keyrow`, whatever link
/// it was run through.
NSString* applicationPath() {
  NSString* const program =
      NSBundle.mainBundle.executablePath.stringByResolvingSymlinksInPath.stringByStandardizingPath;
  return program.stringByDeletingLastPathComponent.stringByDeletingLastPathComponent
      .stringByDeletingLastPathComponent;
}

}  // namespace

int main(int argumentCount, char** argumentTexts) {
  @autoreleasepool {
    using namespace keyrow::macos;
    const std::vector<std::string> arguments{argumentTexts + 1, argumentTexts + argumentCount};
    const auto bundle = makeBundle(utf8Text(applicationPath()));
    const auto clock = makeClock();
    const auto distributedNotificationCenter = makeDistributedNotificationCenter();
    const auto globalPreferences = makeGlobalPreferences();
    const auto hidSystem = makeHidSystem();
    const auto mainQueue = makeMainQueue();
    const auto notificationCenter = makeNotificationCenter();
    const auto process = makeProcess();
    const auto secureInput = makeSecureInput();
    const auto systemLog = makeSystemLog();
    const auto terminal = makeTerminal();
    const auto text = makeText();
    const auto userDefaults = makeUserDefaults(keyrow::appIdentifier);
    const auto workspace = makeWorkspace();
    keyrow::tool::Tool tool{{.bundle = *bundle,
                             .clock = *clock,
                             .distributedNotificationCenter = *distributedNotificationCenter,
                             .globalPreferences = *globalPreferences,
                             .hidSystem = *hidSystem,
                             .mainQueue = *mainQueue,
                             .notificationCenter = *notificationCenter,
                             .process = *process,
                             .secureInput = *secureInput,
                             .systemLog = *systemLog,
                             .terminal = *terminal,
                             .text = *text,
                             .userDefaults = *userDefaults,
                             .workspace = *workspace,
                             .finished = [](int status) { std::exit(status); }}};
    tool.run(arguments);
    [NSRunLoop.mainRunLoop run];
  }
  return EXIT_FAILURE;
}
