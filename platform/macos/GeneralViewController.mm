#include "platform/macos/GeneralViewController.h"

@implementation GeneralViewController

- (void)loadView {
  self.view = [[NSView alloc] init];
}

@end
