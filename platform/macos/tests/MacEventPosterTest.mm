#include "platform/EventPoster.h"

#import <AppKit/AppKit.h>
#include <IOKit/hidsystem/IOLLEvent.h>
#include <IOKit/hidsystem/ev_keymap.h>

#include "platform/KeyEvent.h"

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

}  // namespace
}  // namespace keyrow::macos
