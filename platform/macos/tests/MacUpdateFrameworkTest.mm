#include "platform/macos/MacUpdateFramework.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// What Sparkle hands out, and nobody else can make.
@interface KeyrowFakeUpdate : NSObject
@property(copy) NSString* displayVersionString;
@end

@implementation KeyrowFakeUpdate
@end

@interface KeyrowFakeUpdateState : NSObject
@property BOOL userInitiated;
@end

@implementation KeyrowFakeUpdateState
@end

namespace keyrow::macos {
namespace {

class SparkleDelegateTest : public ::testing::Test, public UpdateFrameworkDelegate {
 protected:
  KeyrowSparkleDelegate* const delegate = [[KeyrowSparkleDelegate alloc] initWithDelegate:*this];
  KeyrowFakeUpdate* const fakeUpdate = [[KeyrowFakeUpdate alloc] init];
  SUAppcastItem* const update = (SUAppcastItem*)(id)fakeUpdate;
  bool answer = false;
  std::vector<std::string> told;

  bool shouldPromptForPermissionToCheck() override { return answer; }
  void willScheduleUpdateCheck() override { told.emplace_back("schedule"); }
  bool supportsGentleScheduledUpdateReminders() const override { return answer; }
  bool shouldHandleShowingScheduledUpdate(bool inImmediateFocus) const override {
    return inImmediateFocus == answer;
  }
  void willHandleShowingUpdate(bool handlesShowing, const std::string& displayVersion,
                               bool isUserInitiated) override {
    told.push_back(std::string{handlesShowing ? "shows " : "does not show "} + displayVersion +
                   (isUserInitiated ? " for the user" : " by itself"));
  }
  void didReceiveUserAttentionForUpdate() override { told.emplace_back("attention"); }
  void willFinishUpdateSession() override { told.emplace_back("finish"); }

  void show(bool handlesShowing, bool isUserInitiated) {
    KeyrowFakeUpdateState* const state = [[KeyrowFakeUpdateState alloc] init];
    state.userInitiated = isUserInitiated;
    [delegate standardUserDriverWillHandleShowingUpdate:handlesShowing
                                              forUpdate:update
                                                  state:(SPUUserUpdateState*)(id)state];
  }
};

TEST_F(SparkleDelegateTest, HandsOnWhatSparkleTells) {
  [delegate standardUserDriverDidReceiveUserAttentionForUpdate:update];
  [delegate standardUserDriverWillFinishUpdateSession];
  EXPECT_EQ(told, (std::vector<std::string>{"attention", "finish"}));
}

TEST_F(SparkleDelegateTest, HandsOnHowAnUpdateIsShown) {
  fakeUpdate.displayVersionString = @"2.0 β";
  show(/*handlesShowing=*/true, /*isUserInitiated=*/false);
  show(/*handlesShowing=*/false, /*isUserInitiated=*/true);
  EXPECT_EQ(told, (std::vector<std::string>{"shows 2.0 β by itself",
                                            "does not show 2.0 β for the user"}));
}

TEST_F(SparkleDelegateTest, HandsBackWhatKeyrowAnswers) {
  for (const bool answered : {true, false}) {
    answer = answered;
    SPUUpdater* const updater = (SPUUpdater*)(id)fakeUpdate;
    EXPECT_EQ([delegate updaterShouldPromptForPermissionToCheckForUpdates:updater], answered);
    EXPECT_EQ(delegate.supportsGentleScheduledUpdateReminders, answered);
    EXPECT_EQ([delegate standardUserDriverShouldHandleShowingScheduledUpdate:update
                                                         andInImmediateFocus:YES],
              answered);
    EXPECT_EQ([delegate standardUserDriverShouldHandleShowingScheduledUpdate:update
                                                         andInImmediateFocus:NO],
              !answered);
  }
}

/// Sparkle leaves out what its delegate does not have, so a name that is misspelt is never heard
/// of again.
TEST_F(SparkleDelegateTest, HasWhatSparkleAsksFor) {
  for (NSString* name in @[
         @"updaterShouldPromptForPermissionToCheckForUpdates:",
         @"updater:willScheduleUpdateCheckAfterDelay:", @"supportsGentleScheduledUpdateReminders",
         @"standardUserDriverShouldHandleShowingScheduledUpdate:andInImmediateFocus:",
         @"standardUserDriverWillHandleShowingUpdate:forUpdate:state:",
         @"standardUserDriverDidReceiveUserAttentionForUpdate:",
         @"standardUserDriverWillFinishUpdateSession"
       ]) {
    EXPECT_TRUE([delegate respondsToSelector:NSSelectorFromString(name)]) << name.UTF8String;
  }
}

}  // namespace
}  // namespace keyrow::macos
