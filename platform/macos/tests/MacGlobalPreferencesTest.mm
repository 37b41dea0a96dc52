#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "core/FnStateController.h"
#include "platform/macos/Conversions.h"

namespace keyrow::macos {
namespace {

// These tests only read: the preferences are the user's own.

TEST(MacGlobalPreferencesTest, HasNothingUnderAMissingKey) {
  const std::unique_ptr<GlobalPreferences> preferences = makeGlobalPreferences();
  EXPECT_EQ(preferences->copyValue("app.keyrow.Keyrow.mac-tests.missing"), std::nullopt);
}

TEST(MacGlobalPreferencesTest, ReadsWhatFoundationReads) {
  const std::unique_ptr<GlobalPreferences> preferences = makeGlobalPreferences();
  NSDictionary* const domain =
      [NSUserDefaults.standardUserDefaults persistentDomainForName:NSGlobalDomain];
  // The locale is a string on nearly every Mac, and the languages are a list, which no value
  // can hold.
  for (const std::string_view key :
       {FnStateController::fnStateDefaultsKey, std::string_view{"AppleLocale"},
        std::string_view{"AppleLanguages"}}) {
    const auto expected = propertyValue((__bridge CFTypeRef)domain[nsString(key)]);
    EXPECT_TRUE(preferences->copyValue(key) == expected) << key;
  }
}

TEST(MacGlobalPreferencesTest, TheFunctionKeyPreferenceIsOnOrOffOrAbsent) {
  const std::unique_ptr<GlobalPreferences> preferences = makeGlobalPreferences();
  const auto value = preferences->copyValue(FnStateController::fnStateDefaultsKey);
  EXPECT_TRUE(!value || value->boolValue());
}

TEST(MacGlobalPreferencesTest, TheDomainIsFoundationsOwn) {
  EXPECT_EQ(GlobalPreferences::domain, utf8Text(NSGlobalDomain));
}

}  // namespace
}  // namespace keyrow::macos
