#include <ApplicationServices/ApplicationServices.h>

#include <memory>

#include "platform/macos/CFRef.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacAccessibility final : public Accessibility {
 public:
  bool isProcessTrusted() override { return AXIsProcessTrusted(); }

  void promptForTrust() override {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanTrue;
    const auto options = CFRef<CFDictionaryRef>::adopt(
        CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks));
    AXIsProcessTrustedWithOptions(options.get());
  }
};

}  // namespace

std::unique_ptr<Accessibility> makeAccessibility() { return std::make_unique<MacAccessibility>(); }

}  // namespace keyrow::macos
