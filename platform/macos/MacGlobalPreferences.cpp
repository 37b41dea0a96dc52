#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <optional>
#include <string_view>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

/// Core Foundation's own name for the global domain: its functions are not documented to
/// know `NSGlobalDomain`, which is Foundation's.
CFStringRef globalDomain() { return kCFPreferencesAnyApplication; }

class MacGlobalPreferences final : public GlobalPreferences {
 public:
  std::optional<PropertyValue> copyValue(std::string_view key) override {
    const auto value = CFRef<CFPropertyListRef>::adopt(CFPreferencesCopyValue(
        cfString(key).get(), globalDomain(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    return propertyValue(value.get());
  }

  void setValue(std::string_view key, const PropertyValue& value) override {
    CFPreferencesSetValue(cfString(key).get(), cfObject(value).get(), globalDomain(),
                          kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
  }

  bool synchronize() override {
    return CFPreferencesSynchronize(globalDomain(), kCFPreferencesCurrentUser,
                                    kCFPreferencesAnyHost) != 0;
  }
};

}  // namespace

std::unique_ptr<GlobalPreferences> makeGlobalPreferences() {
  return std::make_unique<MacGlobalPreferences>();
}

}  // namespace keyrow::macos
