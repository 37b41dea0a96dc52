#include "platform/macos/MacAccessibility.h"

#include <ApplicationServices/ApplicationServices.h>

#include "platform/macos/CFRef.h"

namespace keyrow::macos {

bool MacAccessibility::isProcessTrusted() { return AXIsProcessTrusted(); }

void MacAccessibility::promptForTrust() {
  const void* key = kAXTrustedCheckOptionPrompt;
  const void* value = kCFBooleanTrue;
  const auto options = CFRef<CFDictionaryRef>::adopt(
      CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks,
                         &kCFTypeDictionaryValueCallBacks));
  AXIsProcessTrustedWithOptions(options.get());
}

}  // namespace keyrow::macos
