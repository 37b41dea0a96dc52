#include "platform/macos/MacProcess.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

std::int32_t MacProcess::processIdentifier() { return NSProcessInfo.processInfo.processIdentifier; }

std::string MacProcess::operatingSystemVersion() {
  return utf8Text(NSProcessInfo.processInfo.operatingSystemVersionString);
}

Registration MacProcess::beginActivity(std::string_view reason) {
  const id activity = [NSProcessInfo.processInfo
      beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                        reason:nsString(reason)];
  return Registration{[activity] { [NSProcessInfo.processInfo endActivity:activity]; }};
}

}  // namespace keyrow::macos
