#import <ServiceManagement/ServiceManagement.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/macos/MacPorts.h"
#include "platform/macos/tests/ReplacedMethod.h"

/// A login item that macOS knows nothing of.
@interface KeyrowFakeAppService : NSObject
@property SMAppServiceStatus status;
@end

@implementation KeyrowFakeAppService
- (BOOL)registerAndReturnError:(NSError**)error {
  self.status = SMAppServiceStatusEnabled;
  return YES;
}
- (BOOL)unregisterAndReturnError:(NSError**)error {
  self.status = SMAppServiceStatusNotRegistered;
  return YES;
}
@end

namespace keyrow::macos {
namespace {

TEST(MacLoginItemTest, RegistersAndUnregistersTheApplicationItself) {
  KeyrowFakeAppService* const fake = [[KeyrowFakeAppService alloc] init];
  const ReplacedMethod mainAppService {
    class_getClassMethod(SMAppService.class, @selector(mainAppService)), ^id(Class) {
      return fake;
    }
  };
  const std::unique_ptr<LoginItem> loginItem = makeLoginItem();
  loginItem->registerItem();
  EXPECT_EQ(fake.status, SMAppServiceStatusEnabled);
  EXPECT_EQ(loginItem->status(), LoginItemStatus::enabled);
  fake.status = SMAppServiceStatusRequiresApproval;
  EXPECT_EQ(loginItem->status(), LoginItemStatus::requiresApproval);
  loginItem->unregisterItem();
  EXPECT_EQ(fake.status, SMAppServiceStatusNotRegistered);
  EXPECT_EQ(loginItem->status(), LoginItemStatus::notRegistered);
}

}  // namespace
}  // namespace keyrow::macos
