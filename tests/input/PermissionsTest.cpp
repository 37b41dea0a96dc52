#include "input/Permissions.h"

#include <optional>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

class PermissionsTest : public SimulatedMacTest {
 protected:
  void SetUp() override {
    observer_ = process->platform().notificationCenter.addObserver(
        permissionsWereLookedAt, [this] { seen = permissions.missing(); });
  }

  Permissions permissions{{.accessibility = process->platform().accessibility,
                           .inputMonitoring = process->platform().inputMonitoring,
                           .notificationCenter = process->platform().notificationCenter}};
  /// What was missing when they were looked at the last time; absent where nobody has looked.
  std::optional<MissingPermission> seen;

 private:
  ObserverToken observer_;
};

TEST_F(PermissionsTest, AccessibilityIsMissingBeforeInputMonitoring) {
  for (const auto access : {InputMonitoringAccess::granted, InputMonitoringAccess::denied,
                            InputMonitoringAccess::unknown}) {
    mac.inputMonitoring.set(access);
    mac.isAccessibilityGranted = false;
    EXPECT_EQ(permissions.missing(), MissingPermission::accessibility);
    mac.isAccessibilityGranted = true;
    EXPECT_EQ(permissions.missing(), access == InputMonitoringAccess::denied
                                         ? MissingPermission::inputMonitoring
                                         : MissingPermission::none);
  }
  EXPECT_EQ(seen, std::nullopt);
}

TEST_F(PermissionsTest, ALookAtOneShowsBoth) {
  mac.inputMonitoring.set(InputMonitoringAccess::denied);
  EXPECT_TRUE(permissions.isProcessTrusted());
  EXPECT_EQ(seen, MissingPermission::inputMonitoring);
  mac.isAccessibilityGranted = false;
  EXPECT_EQ(permissions.access(), InputMonitoringAccess::denied);
  EXPECT_EQ(seen, MissingPermission::accessibility);
}

}  // namespace
}  // namespace keyrow::sim
