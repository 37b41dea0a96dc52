#include "platform/macos/MacEventMonitors.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>
#include <gtest/gtest.h>

#include <string>

#include "core/KeyNames.h"
#include "core/LocalToggleShortcut.h"
#include "platform/KeyEvent.h"
#include "platform/VirtualKeys.h"
#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {
namespace {

static_assert(keyEventFlag::alphaShift == NSEventModifierFlagCapsLock);
static_assert(keyEventFlag::shift == NSEventModifierFlagShift);
static_assert(keyEventFlag::control == NSEventModifierFlagControl);
static_assert(keyEventFlag::option == NSEventModifierFlagOption);
static_assert(keyEventFlag::command == NSEventModifierFlagCommand);
static_assert(keyEventFlag::secondaryFn == NSEventModifierFlagFunction);

constexpr auto allModifiers = keyEventFlag::alphaShift | keyEventFlag::shift |
                              keyEventFlag::control | keyEventFlag::option | keyEventFlag::command;

static_assert(graveAccentKeyCode == kVK_ANSI_Grave);
static_assert(escapeKeyCode == kVK_Escape);
static_assert(virtualKey::space == kVK_Space);
static_assert(virtualKey::rightCommand == kVK_RightCommand);
static_assert(virtualKey::command == kVK_Command);
static_assert(virtualKey::shift == kVK_Shift);
static_assert(virtualKey::capsLock == kVK_CapsLock);
static_assert(virtualKey::option == kVK_Option);
static_assert(virtualKey::control == kVK_Control);
static_assert(virtualKey::rightShift == kVK_RightShift);
static_assert(virtualKey::rightOption == kVK_RightOption);
static_assert(virtualKey::rightControl == kVK_RightControl);
static_assert(virtualKey::function == kVK_Function);
static_assert(virtualKey::f1 == kVK_F1);
static_assert(virtualKey::f2 == kVK_F2);
static_assert(virtualKey::f3 == kVK_F3);
static_assert(virtualKey::f4 == kVK_F4);
static_assert(virtualKey::f5 == kVK_F5);
static_assert(virtualKey::f6 == kVK_F6);
static_assert(virtualKey::f7 == kVK_F7);
static_assert(virtualKey::f8 == kVK_F8);
static_assert(virtualKey::f9 == kVK_F9);
static_assert(virtualKey::f10 == kVK_F10);
static_assert(virtualKey::f11 == kVK_F11);
static_assert(virtualKey::f12 == kVK_F12);

/// The key as a monitor hands it on. Making an event takes no permission, unlike posting it.
KeyDown pressed(CGKeyCode keyCode, CGEventFlags flags = 0) {
  const auto event = CFRef<CGEventRef>::adopt(
      CGEventCreateKeyboardEvent(/*source=*/nullptr, keyCode, /*keyDown=*/true));
  // Whoever sits at this Mac may hold a modifier.
  const CGEventFlags own = CGEventGetFlags(event.get()) & ~allModifiers;
  CGEventSetFlags(event.get(), own | flags);
  return keyDown([NSEvent eventWithCGEvent:event.get()]);
}

LocalToggleShortcut shortcut(const KeyDown& key) {
  const std::unique_ptr<Text> text = makeText();
  return makeLocalToggleShortcut(key.keyCode, key.charactersIgnoringModifiers, *text);
}

struct SpecialKey {
  int keyCode;
  std::string characters;
};

class SpecialKeyTest : public ::testing::TestWithParam<SpecialKey> {};

/// Of the keys that do the same in every keyboard layout.
TEST_P(SpecialKeyTest, BringsItsCharacter) {
  const auto& [code, characters] = GetParam();
  const auto keyCode = static_cast<CGKeyCode>(code);
  EXPECT_EQ(pressed(keyCode).keyCode, keyCode);
  EXPECT_EQ(pressed(keyCode).charactersIgnoringModifiers, characters);
  EXPECT_EQ(pressed(keyCode, kCGEventFlagMaskCommand).charactersIgnoringModifiers, characters);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, SpecialKeyTest,
    ::testing::Values(SpecialKey{kVK_Escape, "\x1B"}, SpecialKey{kVK_Return, "\r"},
                      SpecialKey{kVK_Tab, "\t"}, SpecialKey{kVK_Space, " "},
                      SpecialKey{kVK_Delete, "\x7F"}, SpecialKey{kVK_UpArrow, "\uF700"},
                      SpecialKey{kVK_DownArrow, "\uF701"}, SpecialKey{kVK_LeftArrow, "\uF702"},
                      SpecialKey{kVK_RightArrow, "\uF703"}, SpecialKey{kVK_F1, "\uF704"},
                      SpecialKey{kVK_F12, "\uF70F"}, SpecialKey{kVK_ForwardDelete, "\uF728"},
                      SpecialKey{kVK_Home, "\uF729"}, SpecialKey{kVK_End, "\uF72B"},
                      SpecialKey{kVK_PageUp, "\uF72C"}, SpecialKey{kVK_PageDown, "\uF72D"}));

TEST(KeyDownTest, EveryKnownKeyHasItsNameWhateverItTypes) {
  for (const auto& name : keyNames()) {
    const auto made = shortcut(pressed(name.keyCode));
    EXPECT_EQ(made.keyCode, name.keyCode);
    EXPECT_EQ(made.displayName, name.displayName);
  }
}

TEST(KeyDownTest, CommandBringsWhatAKeyEquivalentIsLookedUpBy) {
  const auto key = pressed(kVK_Space, kCGEventFlagMaskCommand | kCGEventFlagMaskShift);
  EXPECT_EQ(key.characters, " ");
  EXPECT_EQ(key.flags & allModifiers, keyEventFlag::command | keyEventFlag::shift);
  EXPECT_EQ(pressed(kVK_Space).flags & allModifiers, 0U);
  EXPECT_FALSE(pressed(kVK_Space).isRepeat);
}

TEST(KeyDownTest, TheArrowsAreNamedAfterTheirDirections) {
  EXPECT_EQ(shortcut(pressed(kVK_LeftArrow)), (LocalToggleShortcut{123, "Left Arrow", ""}));
  EXPECT_EQ(shortcut(pressed(kVK_RightArrow)), (LocalToggleShortcut{124, "Right Arrow", ""}));
  EXPECT_EQ(shortcut(pressed(kVK_DownArrow)), (LocalToggleShortcut{125, "Down Arrow", ""}));
  EXPECT_EQ(shortcut(pressed(kVK_UpArrow)), (LocalToggleShortcut{126, "Up Arrow", ""}));
}

TEST(KeyDownTest, EscapeIsNamedByItsCode) {
  EXPECT_EQ(shortcut(pressed(kVK_Escape)), (LocalToggleShortcut{53, "KeyCode 53", std::nullopt}));
}

TEST(KeyDownTest, EnterTypesAControlCharacterAndIsNamedByItsCode) {
  EXPECT_EQ(shortcut(pressed(kVK_ANSI_KeypadEnter)),
            (LocalToggleShortcut{76, "KeyCode 76", std::nullopt}));
}

}  // namespace
}  // namespace keyrow::macos
