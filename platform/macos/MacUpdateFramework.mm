#include "platform/macos/MacUpdateFramework.h"

#include "platform/macos/Conversions.h"

@implementation KeyrowSparkleDelegate {
  keyrow::UpdateFrameworkDelegate* _delegate;
}

- (instancetype)initWithDelegate:(keyrow::UpdateFrameworkDelegate&)delegate {
  self = [super init];
  if (self) _delegate = &delegate;
  return self;
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

void MacUpdateFramework::start(UpdateFrameworkDelegate& delegate) {
  delegate_ = [[KeyrowSparkleDelegate alloc] initWithDelegate:delegate];
  updaterController_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                     updaterDelegate:delegate_
                                                                  userDriverDelegate:delegate_];
}

void MacUpdateFramework::checkForUpdates() { [updaterController_ checkForUpdates:nil]; }

bool MacUpdateFramework::automaticallyChecksForUpdates() {
  return updaterController_.updater.automaticallyChecksForUpdates;
}

void MacUpdateFramework::setAutomaticallyChecksForUpdates(bool checks) {
  updaterController_.updater.automaticallyChecksForUpdates = checks;
}

}  // namespace keyrow::macos
