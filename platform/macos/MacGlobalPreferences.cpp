#include "platform/macos/MacGlobalPreferences.h"

#include <CoreFoundation/CoreFoundation.h>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"

namespace keyrow::macos {

namespace {

/// Core Foundation's own name for the global domain: its functions are not documented to
/// know `NSGlobalDomain`, which is Foundation's.
CFStringRef globalDomain() { return kCFPreferencesAnyApplication; }

}  // namespace

std::optional<PropertyValue> MacGlobalPreferences::copyValue(std::string_view key) {
  const auto value = CFRef<CFPropertyListRef>::adopt(CFPreferencesCopyValue(
      cfString(key).get(), globalDomain(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
  return propertyValue(value.get());
}

void MacGlobalPreferences::setValue(std::string_view key, const PropertyValue& value) {
  CFPreferencesSetValue(cfString(key).get(), cfObject(value).get(), globalDomain(),
                        kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
}

bool MacGlobalPreferences::synchronize() {
  return CFPreferencesSynchronize(globalDomain(), kCFPreferencesCurrentUser,
                                  kCFPreferencesAnyHost) != 0;
}

}  // namespace keyrow::macos
