#include "core/KeyNames.h"

#include <algorithm>
#include <array>

#include "platform/VirtualKeys.h"

namespace keyrow {

namespace {

constexpr std::array<KeyName, 80> table{{
    {0, "A", "a"},
    {1, "S", "s"},
    {2, "D", "d"},
    {3, "F", "f"},
    {4, "H", "h"},
    {5, "G", "g"},
    {6, "Z", "z"},
    {7, "X", "x"},
    {8, "C", "c"},
    {9, "V", "v"},
    {11, "B", "b"},
    {12, "Q", "q"},
    {13, "W", "w"},
    {14, "E", "e"},
    {15, "R", "r"},
    {16, "Y", "y"},
    {17, "T", "t"},
    {31, "O", "o"},
    {32, "U", "u"},
    {34, "I", "i"},
    {35, "P", "p"},
    {37, "L", "l"},
    {38, "J", "j"},
    {40, "K", "k"},
    {45, "N", "n"},
    {46, "M", "m"},
    {18, "1", "1"},
    {19, "2", "2"},
    {20, "3", "3"},
    {21, "4", "4"},
    {23, "5", "5"},
    {22, "6", "6"},
    {26, "7", "7"},
    {28, "8", "8"},
    {25, "9", "9"},
    {29, "0", "0"},
    {24, "=", "="},
    {27, "-", "-"},
    {30, "]", "]"},
    {33, "[", "["},
    {39, "'", "'"},
    {41, ";", ";"},
    {42, "\\", "\\"},
    {43, ",", ","},
    {44, "/", "/"},
    {47, ".", "."},
    {50, "`", "`"},
    {48, "Tab", "\t"},
    {virtualKey::space, "Space", " "},
    {36, "Return", "\r"},
    {117, "Forward Delete", ""},
    {51, "Delete", ""},
    {115, "Home", ""},
    {119, "End", ""},
    {116, "Page Up", ""},
    {121, "Page Down", ""},
    {123, "Left Arrow", ""},
    {124, "Right Arrow", ""},
    {126, "Up Arrow", ""},
    {125, "Down Arrow", ""},
    {virtualKey::f1, "F1", ""},
    {virtualKey::f2, "F2", ""},
    {virtualKey::f3, "F3", ""},
    {virtualKey::f4, "F4", ""},
    {virtualKey::f5, "F5", ""},
    {virtualKey::f6, "F6", ""},
    {virtualKey::f7, "F7", ""},
    {virtualKey::f8, "F8", ""},
    {virtualKey::f9, "F9", ""},
    {virtualKey::f10, "F10", ""},
    {virtualKey::f11, "F11", ""},
    {virtualKey::f12, "F12", ""},
    {105, "F13", ""},
    {107, "F14", ""},
    {113, "F15", ""},
    {106, "F16", ""},
    {64, "F17", ""},
    {79, "F18", ""},
    {80, "F19", ""},
    {90, "F20", ""},
}};

}  // namespace

std::span<const KeyName> keyNames() { return table; }

const KeyName* findKeyName(std::uint16_t keyCode) {
  const auto row = std::ranges::find(table, keyCode, &KeyName::keyCode);
  return row == table.end() ? nullptr : &*row;
}

}  // namespace keyrow
