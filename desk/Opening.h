#pragma once

#include <array>
#include <string_view>

namespace keyrow::desk {

/// What a desk begins with where no scenario is given. The first line is the one sentence that
/// says what to try.
inline constexpr std::array<std::string_view, 9> openingLines{
    "# Click the globe in the menu bar, which is Keyrow, and watch the top row of the built-in "
    "keyboard.",
    "install com.apple.TextEdit",
    "install com.apple.Music",
    "install com.apple.Safari",
    "keyboard built-in product=\"Built-in Keyboard\" transport=SPI built-in=true",
    "keyboard usb vendor=0x046d product=\"Foreign Keyboard\" transport=USB built-in=false",
    "front com.apple.TextEdit",
    "launch keyrow",
    "wait 2s",
};

}  // namespace keyrow::desk
