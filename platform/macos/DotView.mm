#include "platform/macos/DotView.h"

#import <QuartzCore/QuartzCore.h>

@implementation KeyrowDotView

- (instancetype)initWithDiameter:(CGFloat)diameter {
  self = [super initWithFrame:NSMakeRect(0, 0, diameter, diameter)];
  if (!self) return nil;
  self.wantsLayer = YES;
  self.layer.cornerRadius = diameter / 2;
  self.translatesAutoresizingMaskIntoConstraints = NO;
  [NSLayoutConstraint activateConstraints:@[
    [self.widthAnchor constraintEqualToConstant:diameter],
    [self.heightAnchor constraintEqualToConstant:diameter],
  ]];
  return self;
}

- (void)setColor:(NSColor*)color {
  _color = color;
  [self resolveColor];
}

- (void)viewDidChangeEffectiveAppearance {
  [super viewDidChangeEffectiveAppearance];
  [self resolveColor];
}

- (void)resolveColor {
  [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
    self.layer.backgroundColor = self.color.CGColor;
  }];
}

@end
