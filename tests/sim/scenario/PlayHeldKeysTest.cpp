#include <gtest/gtest.h>

#include "tests/sim/scenario/Played.h"

namespace keyrow::sim {
namespace {

TEST(PlayHeldKeysTest, TheKeysOfAKeyboardThatIsTakenAwayAreReleased) {
  const auto played = play(
      "keyboard k\nhold A on k\nhold shift on k\nunplug k\n"
      "expect key \"left-shift up reaches nobody\" then key \"A up reaches nobody\"\n"
      "wait 10s\nexpect no key\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayHeldKeysTest, WhatIsHeldCannotBePressedAndWhatIsNotHeldCannotBeReleased) {
  EXPECT_EQ(play("keyboard k\nhold A on k\npress A on none\npress A on k\n").output,
            "play.txt:4:1: A is held already on k\n");
  EXPECT_EQ(play("keyboard k\nrelease B on k\n").output, "play.txt:2:1: B is not held on k\n");
  EXPECT_EQ(play("keyboard k\nhold A on k\nunplug k\nrelease A on k\n").output,
            "play.txt:4:1: A is not held on k\n");
}

TEST(PlayHeldKeysTest, OnlyTheKeyThatWentDownLastRepeats) {
  const auto played = play(
      "keyboard k\nhold A on k\nwait 499ms\nexpect no key\nwait 1ms\n"
      "expect key \"A repeat reaches nobody\" 1 times\nwait 83ms\nexpect key 1 times\n"
      "hold B on k\nwait 500ms\nexpect key 1 times\nexpect key \"B repeat reaches nobody\"\n"
      "release A on k\nwait 83ms\nexpect key \"B repeat reaches nobody\"\n"
      "hold shift on k\nwait 83ms\nexpect key \"B repeat with shift reaches nobody\"\n"
      "release B on k\nwait 10s\nexpect no key\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayHeldKeysTest, KeysOfTwoKeyboardsRepeatSideBySide) {
  const auto played = play(
      "keyboard k\nkeyboard l\nhold A on k\nhold A on l\nwait 500ms\n"
      "expect key \"A repeat reaches nobody\" 2 times\nsleep\nwait 1h\nexpect no key\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayHeldKeysTest, AnAppleKeyboardSendsOtherKeysWithFn) {
  const auto played = play(
      "keyboard k built-in=true\npress fn+delete on k\n"
      "expect key \"Forward Delete down reaches nobody\"\npress fn+F5 on k\n"
      "expect key \"F5 down reaches nobody\"\npress F5 on k\n"
      "expect key \"key 176 down reaches nobody\"\nhold F12 on k\n"
      "expect key \"volume up down\"\nwait 500ms\nexpect key \"volume up repeat\"\n"
      "release F12 on k\nexpect key \"volume up up\"\nhold F8 on k\nwait 1s\nexpect no key\n"
      "hardware standard\npress F5 on k\nexpect key \"F5 down reaches nobody\"\n"
      "press fn+F5 on k\nexpect no key \"F5 down reaches nobody\"\n");
  EXPECT_EQ(played.output, "");
}

}  // namespace
}  // namespace keyrow::sim
