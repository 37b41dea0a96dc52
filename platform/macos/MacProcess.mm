#import <Foundation/Foundation.h>
#include <unistd.h>

#include <memory>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacProcess final : public Process {
 public:
  std::int32_t processIdentifier() override { return NSProcessInfo.processInfo.processIdentifier; }

  bool isRoot() override { return geteuid() == 0; }

  std::string operatingSystemVersion() override {
    return utf8Text(NSProcessInfo.processInfo.operatingSystemVersionString);
  }

  Registration beginActivity(std::string_view reason) override {
    const id activity = [NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:nsString(reason)];
    return Registration{[activity] { [NSProcessInfo.processInfo endActivity:activity]; }};
  }
};

}  // namespace

std::unique_ptr<Process> makeProcess() { return std::make_unique<MacProcess>(); }

}  // namespace keyrow::macos
