#include "platform/macos/PreferencesTabViewController.h"

#include <cstddef>

#include "platform/macos/Conversions.h"

@implementation PreferencesTabViewController {
  keyrow::SettingsWindowActions* _actions;
  NSArray<NSViewController*>* _panes;
  NSSize _size;
}

- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions
                          panes:(NSArray<NSViewController*>*)panes
                           size:(NSSize)size {
  self = [super init];
  if (!self) return nil;
  _actions = &actions;
  _panes = panes;
  _size = size;
  return self;
}

- (void)viewDidLoad {
  [super viewDidLoad];
  self.tabView.tabViewType = NSNoTabsNoBorder;

  NSMutableArray<NSTabViewItem*>* const items = [NSMutableArray array];
  for (std::size_t index = 0; index < keyrow::settingsTabs.size(); ++index) {
    const auto& tab = keyrow::settingsTabs[index];
    NSViewController* const pane = _panes[index];
    pane.title = keyrow::macos::nsString(tab.title);
    pane.preferredContentSize = _size;
    NSTabViewItem* const item = [NSTabViewItem tabViewItemWithViewController:pane];
    item.label = keyrow::macos::nsString(tab.title);
    item.image = [NSImage imageWithSystemSymbolName:keyrow::macos::nsString(tab.symbolName)
                           accessibilityDescription:nil];
    [items addObject:item];
  }
  self.tabViewItems = items;
  self.selectedTabViewItemIndex = 0;
  self.preferredContentSize = _size;
  self.tabStyle = NSTabViewControllerTabStyleToolbar;
  self.canPropagateSelectedChildViewControllerTitle = NO;
}

- (void)viewDidAppear {
  [super viewDidAppear];
  _actions->viewDidAppear();
}

- (void)tabView:(NSTabView*)tabView didSelectTabViewItem:(NSTabViewItem*)tabViewItem {
  [super tabView:tabView didSelectTabViewItem:tabViewItem];
  _actions->didSelectTabViewItem();
}

@end
