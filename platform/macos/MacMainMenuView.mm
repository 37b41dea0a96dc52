#include "platform/macos/MacMainMenuView.h"

#include "platform/macos/Conversions.h"

/// Hands what the user chooses among Keyrow's own items on.
@interface KeyrowMainMenuTarget : NSObject
- (instancetype)initWithActions:(keyrow::MainMenuActions&)actions;
@end

@implementation KeyrowMainMenuTarget {
  keyrow::MainMenuActions* _actions;
}

- (instancetype)initWithActions:(keyrow::MainMenuActions&)actions {
  self = [super init];
  if (self) _actions = &actions;
  return self;
}

- (void)showAbout:(id)sender {
  _actions->showAbout();
}

- (void)showSettings:(id)sender {
  _actions->showSettings();
}

- (void)showAcknowledgements:(id)sender {
  _actions->showAcknowledgements();
}

@end

namespace keyrow::macos {

namespace {

SEL selectorOf(MainMenuAction action) {
  using enum MainMenuAction;
  switch (action) {
    case showAbout:
      return @selector(showAbout:);
    case showSettings:
      return @selector(showSettings:);
    case showAcknowledgements:
      return @selector(showAcknowledgements:);
    case hide:
      return @selector(hide:);
    case hideOtherApplications:
      return @selector(hideOtherApplications:);
    case unhideAllApplications:
      return @selector(unhideAllApplications:);
    case terminate:
      return @selector(terminate:);
    case undo:
      return @selector(undo:);
    case redo:
      return @selector(redo:);
    case cut:
      return @selector(cut:);
    case copy:
      return @selector(copy:);
    case paste:
      return @selector(paste:);
    case remove:
      return @selector(delete:);
    case selectAll:
      return @selector(selectAll:);
    case performClose:
      return @selector(performClose:);
    case performMiniaturize:
      return @selector(performMiniaturize:);
    case performZoom:
      return @selector(performZoom:);
    case arrangeInFront:
      return @selector(arrangeInFront:);
  }
}

}  // namespace

void MacMainMenuView::create() {
  target_ = [[KeyrowMainMenuTarget alloc] initWithActions:actions()];
  NSMenu* const bar = [[NSMenu alloc] init];
  for (const auto& menu : mainMenus()) {
    NSMenu* const submenu = [[NSMenu alloc] initWithTitle:nsString(menu.title)];
    for (const auto& item : menu.items) [submenu addItem:menuItem(item)];
    [bar addItem:[[NSMenuItem alloc] init]];
    bar.itemArray.lastObject.submenu = submenu;
  }
  NSApp.mainMenu = bar;
  NSApp.windowsMenu = [bar itemAtIndex:windowMenuIndex].submenu;
}

NSMenuItem* MacMainMenuView::menuItem(const MainMenuItem& item) const {
  if (item.isSeparator()) return NSMenuItem.separatorItem;
  const SEL selector = selectorOf(item.action);
  NSMenuItem* const menuItem = [[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                          action:selector
                                                   keyEquivalent:nsString(item.key)];
  menuItem.keyEquivalentModifierMask =
      NSEventModifierFlagCommand | (item.hasOption ? NSEventModifierFlagOption : 0);
  // Without a target it goes to what has the focus, and to the application in the end.
  menuItem.target = [target_ respondsToSelector:selector] ? target_ : nil;
  return menuItem;
}

}  // namespace keyrow::macos
