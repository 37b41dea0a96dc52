#pragma once

#import <Sparkle/Sparkle.h>

#include "platform/UpdateFramework.h"

/// Hands on what Sparkle asks and tells.
@interface KeyrowSparkleDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initWithDelegate:(keyrow::UpdateFrameworkDelegate&)delegate;
@end
