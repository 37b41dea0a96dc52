#include "platform/macos/MacPorts.h"

#include <IOKit/hidsystem/IOHIDLib.h>
#include <gtest/gtest.h>

namespace keyrow::macos {
namespace {

static_assert(static_cast<int>(InputMonitoringAccess::granted) == kIOHIDAccessTypeGranted);
static_assert(static_cast<int>(InputMonitoringAccess::denied) == kIOHIDAccessTypeDenied);
static_assert(static_cast<int>(InputMonitoringAccess::unknown) == kIOHIDAccessTypeUnknown);

TEST(MacInputMonitoringTest, TellsWhatTheUserHasSaidWithoutWaiting) {
  const std::unique_ptr<InputMonitoring> inputMonitoring = makeInputMonitoring();
  const auto access = inputMonitoring->access();
  EXPECT_GE(access, InputMonitoringAccess::granted);
  EXPECT_LE(access, InputMonitoringAccess::unknown);
}

}  // namespace
}  // namespace keyrow::macos
