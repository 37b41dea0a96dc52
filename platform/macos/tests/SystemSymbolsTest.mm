#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "platform/macos/Conversions.h"
#include "ui/SettingsWindowView.h"

namespace keyrow::macos {
namespace {

bool isSystemSymbol(std::string_view name) {
  return [NSImage imageWithSystemSymbolName:nsString(name) accessibilityDescription:nil] != nil;
}

TEST(SystemSymbolsTest, ThisMacHasAllThatKeyrowShows) {
  for (const auto& tab : settingsTabs) EXPECT_TRUE(isSystemSymbol(tab.symbolName)) << tab.title;
  // The status item's.
  EXPECT_TRUE(isSystemSymbol("fn"));
  EXPECT_TRUE(isSystemSymbol("globe"));
  EXPECT_FALSE(isSystemSymbol("keyrow.has.no.such.symbol"));
}

}  // namespace
}  // namespace keyrow::macos
