#include "platform/macos/MacStatusItemView.h"

#include "platform/macos/Conversions.h"

@implementation KeyrowStatusItemTarget {
  keyrow::StatusItemActions* _actions;
}

- (instancetype)initWithActions:(keyrow::StatusItemActions&)actions {
  self = [super init];
  if (self) _actions = &actions;
  return self;
}

- (void)statusBarButtonClicked:(id)sender {
  NSEvent* const event = NSApp.currentEvent;
  const bool isControlHeld = (event.modifierFlags & NSEventModifierFlagControl) != 0;
  _actions->statusBarButtonClicked(keyrow::macos::clickEvent(event), isControlHeld);
}

- (BOOL)showMenu {
  _actions->showMenu();
  return YES;
}

- (void)handleMenuGlobalSwitch:(NSMenuItem*)item {
  _actions->handleMenuGlobalSwitch(
      keyrow::macos::propertyValue((__bridge CFTypeRef)item.representedObject));
}

- (void)handleMenuLocalSwitch:(NSMenuItem*)item {
  _actions->handleMenuLocalSwitch(
      keyrow::macos::propertyValue((__bridge CFTypeRef)item.representedObject));
}

- (void)openPreferences:(NSMenuItem*)item {
  _actions->openPreferences();
}

- (void)quit:(NSMenuItem*)item {
  _actions->quit();
}

- (void)menuDidClose:(NSMenu*)menu {
  _actions->menuDidClose();
}

@end

namespace keyrow::macos {

namespace {

/// A dot at its place on the button.
KeyrowDotView* addIndicator(NSStatusBarButton* button) {
  constexpr StatusIndicatorLayout layout;
  KeyrowDotView* const view = [[KeyrowDotView alloc] initWithDiameter:layout.diameter];
  view.hidden = YES;
  [button addSubview:view];
  [NSLayoutConstraint activateConstraints:@[
    [view.leadingAnchor constraintEqualToAnchor:button.trailingAnchor
                                       constant:layout.leadingToButtonTrailing],
    [view.centerYAnchor constraintEqualToAnchor:button.centerYAnchor],
  ]];
  return view;
}

SEL selectorOf(MenuAction action) {
  switch (action) {
    case MenuAction::none:
      return nullptr;
    case MenuAction::handleMenuGlobalSwitch:
      return @selector(handleMenuGlobalSwitch:);
    case MenuAction::handleMenuLocalSwitch:
      return @selector(handleMenuLocalSwitch:);
    case MenuAction::openPreferences:
      return @selector(openPreferences:);
    case MenuAction::quit:
      return @selector(quit:);
  }
}

NSEventModifierFlags flagsOf(MenuKeyModifier modifier) {
  switch (modifier) {
    case MenuKeyModifier::command:
      return NSEventModifierFlagCommand;
    case MenuKeyModifier::function:
      return NSEventModifierFlagFunction;
    case MenuKeyModifier::shift:
      return NSEventModifierFlagShift;
  }
}

}  // namespace

ClickEvent clickEvent(NSEvent* event) {
  if (!event) return ClickEvent::none;
  switch (event.type) {
    case NSEventTypeLeftMouseUp:
      return ClickEvent::leftMouseUp;
    case NSEventTypeRightMouseDown:
      return ClickEvent::rightMouseDown;
    default:
      return ClickEvent::other;
  }
}

void MacStatusItemView::create() {
  target_ = [[KeyrowStatusItemTarget alloc] initWithActions:actions()];
  statusItem_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
  NSStatusBarButton* const button = statusItem_.button;
  if (!button) return;
  button.target = target_;
  button.action = @selector(statusBarButtonClicked:);
  [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseDown];
  // VoiceOver has nothing else to say about a button without text.
  button.accessibilityLabel = @"Keyrow";

  button.accessibilityCustomActions =
      @[ [[NSAccessibilityCustomAction alloc] initWithName:nsString(showMenuActionName)
                                                    target:target_
                                                  selector:@selector(showMenu)] ];

  KeyrowDotView* const statusIndicator = addIndicator(button);
  const auto& [red, green, blue, alpha] = capsLockIndicatorColor;
  statusIndicator.color = [NSColor colorWithCalibratedRed:red green:green blue:blue alpha:alpha];
  statusIndicatorView_ = statusIndicator;
  KeyrowDotView* const scopeIndicator = addIndicator(button);
  scopeIndicator.color = NSColor.systemBlueColor;
  scopeIndicatorView_ = scopeIndicator;
}

void MacStatusItemView::setImage(std::string_view systemSymbolName) {
  NSImage* const image = [NSImage imageWithSystemSymbolName:nsString(systemSymbolName)
                                   accessibilityDescription:nil];
  [image setTemplate:YES];
  statusItem_.button.image = image;
}

void MacStatusItemView::setCapsLockIndicatorHidden(bool hidden) {
  NSView* const view = statusIndicatorView_;
  view.hidden = hidden;
}

void MacStatusItemView::setScopeIndicator(bool hidden, std::optional<std::string_view> toolTip) {
  NSView* const view = scopeIndicatorView_;
  view.hidden = hidden;
  view.toolTip = toolTip ? nsString(*toolTip) : nil;
}

void MacStatusItemView::setAccessibilityValue(std::string_view value) {
  if (!button()) return;
  button().accessibilityValue = nsString(value);
  NSAccessibilityPostNotification(button(), NSAccessibilityValueChangedNotification);
}

void MacStatusItemView::announce(std::string_view text) {
  NSAccessibilityPostNotificationWithUserInfo(
      NSApp, NSAccessibilityAnnouncementRequestedNotification, @{
        NSAccessibilityAnnouncementKey : nsString(text),
        NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)
      });
}

void MacStatusItemView::setHighlighted(bool highlighted) {
  [statusItem_.button highlight:highlighted];
}

void MacStatusItemView::popUpMenu(const std::vector<MenuItem>& items) {
  NSStatusBarButton* const button = statusItem_.button;
  if (!button) return;
  NSMenu* const menu = [[NSMenu alloc] init];
  menu.delegate = target_;
  menu.autoenablesItems = NO;
  for (const auto& item : items) [menu addItem:menuItem(item)];

  NSAppearanceName const name = [button.effectiveAppearance
      bestMatchFromAppearancesWithNames:@[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]];
  menu.appearance = name ? [NSAppearance appearanceNamed:name] : nil;

  NSStatusBar* const bar = statusItem_.statusBar;
  const CGFloat y = bar ? bar.thickness : NSMaxY(button.bounds);
  [menu popUpMenuPositioningItem:nil atLocation:NSMakePoint(statusMenuX, y) inView:button];
}

NSMenuItem* MacStatusItemView::menuItem(const MenuItem& item) const {
  if (item.isSeparator) return NSMenuItem.separatorItem;
  NSMenuItem* const menuItem = [[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                          action:selectorOf(item.action)
                                                   keyEquivalent:nsString(item.keyEquivalent)];
  menuItem.target = target_;
  menuItem.keyEquivalentModifierMask = flagsOf(item.keyModifier);
  menuItem.enabled = item.isEnabled;
  menuItem.toolTip = item.toolTip.empty() ? nil : nsString(item.toolTip);
  menuItem.representedObject = item.representedObject ? @(*item.representedObject) : nil;
  return menuItem;
}

}  // namespace keyrow::macos
