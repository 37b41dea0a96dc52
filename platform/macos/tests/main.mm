#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  @autoreleasepool {
    // Windows and key events need it; it is never run.
    [NSApplication sharedApplication];
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
  }
}
