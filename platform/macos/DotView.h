#pragma once

#import <AppKit/AppKit.h>

/// A round dot. Its colour is resolved in the appearance that it stands in, and again when that
/// changes.
@interface KeyrowDotView : NSView
/// With its constraints: as wide as it is high, in points.
- (instancetype)initWithDiameter:(CGFloat)diameter;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
@property(nonatomic) NSColor* color;
@end
