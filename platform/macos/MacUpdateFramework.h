#pragma once

#import <Sparkle/Sparkle.h>

#include "platform/UpdateFramework.h"

/// Hands on what Sparkle asks and tells.
@interface KeyrowSparkleDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initWithDelegate:(keyrow::UpdateFrameworkDelegate&)delegate;
@end

namespace keyrow::macos {

/// `UpdateFramework` on Sparkle.
class MacUpdateFramework final : public UpdateFramework {
 public:
  void start(UpdateFrameworkDelegate& delegate) override;
  void checkForUpdates() override;
  bool automaticallyChecksForUpdates() override;
  void setAutomaticallyChecksForUpdates(bool checks) override;

 private:
  /// The updater does not retain it.
  KeyrowSparkleDelegate* delegate_ = nil;
  SPUStandardUpdaterController* updaterController_ = nil;
};

}  // namespace keyrow::macos
