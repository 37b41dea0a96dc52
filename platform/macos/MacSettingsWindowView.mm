#include "platform/macos/MacSettingsWindowView.h"

#include <cstdlib>

#include "platform/macos/Conversions.h"
#include "platform/macos/PreferencesTabViewController.h"

/// Controls the one settings window.
@interface KeyrowSettingsWindowController : NSWindowController
- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions
                          panes:(NSArray<NSViewController*>*)panes
                           size:(NSSize)size;
- (instancetype)initWithWindow:(NSWindow*)window NS_UNAVAILABLE;
@end

@implementation KeyrowSettingsWindowController

- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions
                          panes:(NSArray<NSViewController*>*)panes
                           size:(NSSize)size {
  PreferencesTabViewController* const tabs =
      [[PreferencesTabViewController alloc] initWithActions:actions panes:panes size:size];
  NSWindow* const window =
      [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                                  styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                            NSWindowStyleMaskMiniaturizable
                                    backing:NSBackingStoreBuffered
                                      defer:NO];
  window.title = keyrow::macos::nsString(keyrow::settingsWindowTitle);
  window.titleVisibility = NSWindowTitleVisible;
  window.titlebarAppearsTransparent = YES;
  window.movableByWindowBackground = YES;
  window.toolbarStyle = NSWindowToolbarStylePreference;
  window.contentMinSize = size;
  window.contentMaxSize = size;
  window.releasedWhenClosed = NO;

  self = [super initWithWindow:window];
  if (self) {
    window.contentViewController = tabs;
    [window center];
  }
  return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  // An exception might be caught on its way, and only logged.
  NSLog(@"init(coder:) has not been implemented");
  abort();
}

@end

namespace keyrow::macos {

namespace {

NSSize nsSize(ContentSize size) { return NSMakeSize(size.width, size.height); }

}  // namespace

void MacSettingsWindowView::create(ContentSize size) {
  controller_ = [[KeyrowSettingsWindowController alloc]
      initWithActions:actions()
                panes:@[ general_.viewController(), about_.viewController() ]
                 size:nsSize(size)];
}

NSWindow* MacSettingsWindowView::window() const { return controller_.window; }

bool MacSettingsWindowView::hasWindow() { return window() != nil; }

void MacSettingsWindowView::bringToFront() {
  [NSApp unhideWithoutActivation];
  if (window().miniaturized) [window() deminiaturize:nil];
  [window() orderFrontRegardless];
  [window() makeKeyAndOrderFront:nil];
  [window() makeMainWindow];
}

void MacSettingsWindowView::selectTab(std::size_t index) {
  auto* const tabs = (PreferencesTabViewController*)window().contentViewController;
  tabs.selectedTabViewItemIndex = static_cast<NSInteger>(index);
}

void MacSettingsWindowView::setFixedContentSize(ContentSize size) {
  const NSSize contentSize = nsSize(size);
  window().contentSize = contentSize;
  window().contentMinSize = contentSize;
  window().contentMaxSize = contentSize;
}

}  // namespace keyrow::macos
