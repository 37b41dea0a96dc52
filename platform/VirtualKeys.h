#pragma once

#include <cstdint>

namespace keyrow {

/// Codes of keys, by where they are and not by what they type (`kVK_…`, HIToolbox Events.h).
namespace virtualKey {
inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t rightCommand = 54;
inline constexpr std::uint16_t command = 55;
inline constexpr std::uint16_t shift = 56;
inline constexpr std::uint16_t capsLock = 57;
inline constexpr std::uint16_t option = 58;
inline constexpr std::uint16_t control = 59;
inline constexpr std::uint16_t rightShift = 60;
inline constexpr std::uint16_t rightOption = 61;
inline constexpr std::uint16_t rightControl = 62;
inline constexpr std::uint16_t function = 63;
inline constexpr std::uint16_t f1 = 122;
inline constexpr std::uint16_t f2 = 120;
inline constexpr std::uint16_t f3 = 99;
inline constexpr std::uint16_t f4 = 118;
inline constexpr std::uint16_t f5 = 96;
inline constexpr std::uint16_t f6 = 97;
inline constexpr std::uint16_t f7 = 98;
inline constexpr std::uint16_t f8 = 100;
inline constexpr std::uint16_t f9 = 101;
inline constexpr std::uint16_t f10 = 109;
inline constexpr std::uint16_t f11 = 103;
inline constexpr std::uint16_t f12 = 111;
}  // namespace virtualKey

}  // namespace keyrow
