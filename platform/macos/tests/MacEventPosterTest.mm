#include "platform/macos/MacEventPoster.h"

#include <IOKit/hidsystem/IOLLEvent.h>
#include <IOKit/hidsystem/ev_keymap.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/KeyEvent.h"
#include "platform/VirtualKeys.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {
namespace {

static_assert(auxiliaryControlButtons == NX_SUBTYPE_AUX_CONTROL_BUTTONS);
static_assert(auxiliaryKey::soundUp == NX_KEYTYPE_SOUND_UP);
static_assert(auxiliaryKey::soundDown == NX_KEYTYPE_SOUND_DOWN);
static_assert(auxiliaryKey::brightnessUp == NX_KEYTYPE_BRIGHTNESS_UP);
static_assert(auxiliaryKey::brightnessDown == NX_KEYTYPE_BRIGHTNESS_DOWN);
static_assert(auxiliaryKey::mute == NX_KEYTYPE_MUTE);
static_assert(auxiliaryKey::play == NX_KEYTYPE_PLAY);
static_assert(auxiliaryKey::next == NX_KEYTYPE_NEXT);
static_assert(auxiliaryKey::previous == NX_KEYTYPE_PREVIOUS);
// What a media key does is told by the types of key events, too.
static_assert(keyEventType::keyDown == NX_KEYDOWN);
static_assert(keyEventType::keyUp == NX_KEYUP);

// Making an event takes no permission, and nobody feels it; posting one does, and somebody would.

TEST(MacEventPosterTest, AMediaKeyIsWhatAnAppleKeyboardSends) {
  const SystemDefinedEvent event{.modifierFlags = 0xA00,
                                 .subtype = auxiliaryControlButtons,
                                 .data1 = std::int64_t{auxiliaryKey::play} << 16 | 0xA00,
                                 .data2 = -1};
  const NSTimeInterval before = NSProcessInfo.processInfo.systemUptime;
  NSEvent* const made = nsEvent(event);
  ASSERT_NE(made, nil);
  EXPECT_EQ(made.type, NSEventTypeSystemDefined);
  EXPECT_EQ(static_cast<std::int64_t>(made.subtype), NX_SUBTYPE_AUX_CONTROL_BUTTONS);
  EXPECT_EQ(made.data1, NX_KEYTYPE_PLAY << 16 | NX_KEYDOWN << 8);
  EXPECT_EQ(made.data2, -1);
  EXPECT_GE(made.timestamp, before);
  EXPECT_LE(made.timestamp, NSProcessInfo.processInfo.systemUptime);
  EXPECT_NE(made.CGEvent, nullptr);
}

TEST(MacEventPosterTest, AKeyHasItsCodeItsDirectionAndTheseModifiersOnly) {
  for (const bool isKeyDown : {true, false}) {
    const auto made =
        keyEvent(/*source=*/nullptr, virtualKey::space, isKeyDown, keyEventFlag::command);
    ASSERT_TRUE(made);
    EXPECT_EQ(CGEventGetType(made.get()), isKeyDown ? kCGEventKeyDown : kCGEventKeyUp);
    EXPECT_EQ(CGEventGetIntegerValueField(made.get(), kCGKeyboardEventKeycode), virtualKey::space);
    constexpr std::uint64_t modifiers = keyEventFlag::shift | keyEventFlag::control |
                                        keyEventFlag::option | keyEventFlag::command |
                                        keyEventFlag::secondaryFn;
    EXPECT_EQ(CGEventGetFlags(made.get()) & modifiers, keyEventFlag::command);
  }
}

TEST(MacEventPosterTest, HasASourceOfKeys) {
  EXPECT_NE(makeEventPoster()->createKeyEventSource(), nullptr);
}

}  // namespace
}  // namespace keyrow::macos
