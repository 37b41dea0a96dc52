#include "platform/macos/AboutViewController.h"

@implementation AboutViewController

- (void)loadView {
  self.view = [[NSView alloc] init];
}

@end
