#include "platform/macos/MacUpdateFramework.h"

#include <memory>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

@implementation KeyrowSparkleDelegate {
  keyrow::UpdateFrameworkDelegate* _delegate;
}

- (instancetype)initWithDelegate:(keyrow::UpdateFrameworkDelegate&)delegate {
  self = [super init];
  if (self) _delegate = &delegate;
  return self;
}

- (BOOL)updaterShouldPromptForPermissionToCheckForUpdates:(SPUUpdater*)updater {
  return _delegate->shouldPromptForPermissionToCheck();
}

- (void)updater:(SPUUpdater*)updater willScheduleUpdateCheckAfterDelay:(NSTimeInterval)delay {
  _delegate->willScheduleUpdateCheck();
}

- (BOOL)supportsGentleScheduledUpdateReminders {
  return _delegate->supportsGentleScheduledUpdateReminders();
}

- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)update
                                         andInImmediateFocus:(BOOL)immediateFocus {
  return _delegate->shouldHandleShowingScheduledUpdate(immediateFocus);
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state {
  _delegate->willHandleShowingUpdate(handleShowingUpdate,
                                     keyrow::macos::utf8Text(update.displayVersionString),
                                     state.userInitiated);
}

- (void)standardUserDriverDidReceiveUserAttentionForUpdate:(SUAppcastItem*)update {
  _delegate->didReceiveUserAttentionForUpdate();
}

- (void)standardUserDriverWillFinishUpdateSession {
  _delegate->willFinishUpdateSession();
}

@end

namespace keyrow::macos {

namespace {

class MacUpdateFramework final : public UpdateFramework {
 public:
  void start(UpdateFrameworkDelegate& delegate) override {
    delegate_ = [[KeyrowSparkleDelegate alloc] initWithDelegate:delegate];
    updaterController_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                       updaterDelegate:delegate_
                                                                    userDriverDelegate:delegate_];
  }

  void checkForUpdates() override { [updaterController_ checkForUpdates:nil]; }

  bool automaticallyChecksForUpdates() override {
    return updaterController_.updater.automaticallyChecksForUpdates;
  }

  void setAutomaticallyChecksForUpdates(bool checks) override {
    updaterController_.updater.automaticallyChecksForUpdates = checks;
  }

 private:
  /// The updater does not retain it.
  KeyrowSparkleDelegate* delegate_ = nil;
  SPUStandardUpdaterController* updaterController_ = nil;
};

}  // namespace

std::unique_ptr<UpdateFramework> makeUpdateFramework() {
  return std::make_unique<MacUpdateFramework>();
}

}  // namespace keyrow::macos
