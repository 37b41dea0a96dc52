#include "reliability/KeyPairs.h"

#include <gtest/gtest.h>

#include <string>

namespace keyrow::reliability {
namespace {

constexpr std::uint16_t watchedF12 = 111;

/// What taps decide about one key that no keyboard holds any more when it comes up.
class KeyPairsTest : public ::testing::Test {
 protected:
  void press(bool reaches) { decide(keyEventType::keyDown, reaches); }
  void repeat(bool reaches) { decide(keyEventType::keyDown, reaches, /*isRepeat=*/true); }

  /// What is wrong after its release.
  std::string release(bool reaches) {
    decide(keyEventType::keyUp, reaches);
    return pairs.takeProblem();
  }

  void decide(std::uint32_t type, bool reaches, bool isRepeat = false) {
    mac.whenKeyIsDecided(
        type, {.timestamp = 0, .flags = 0, .keyCode = watchedF12, .isRepeat = isRepeat}, reaches);
  }

  sim::SimulatedMac mac;
  KeyPairs pairs{mac};
};

TEST_F(KeyPairsTest, SeeNothingWrongWithAKeyThatComesUp) {
  press(true);
  EXPECT_EQ(release(true), "");
  press(false);
  EXPECT_EQ(release(false), "");
  press(false);
  EXPECT_EQ(release(true), "");
}

TEST_F(KeyPairsTest, SeeAKeyThatStaysDownInAnApplication) {
  press(true);
  EXPECT_EQ(release(false), "F12 stays down in an application");
}

TEST_F(KeyPairsTest, SeeThatARepeatPutsItDown) {
  press(false);
  repeat(true);
  EXPECT_EQ(release(false), "F12 stays down in an application");
}

TEST_F(KeyPairsTest, SeeItAfterSecureInputToo) {
  press(false);
  EXPECT_EQ(release(false), "");
  mac.setSecureInput(true);
  press(true);
  mac.setSecureInput(false);
  EXPECT_EQ(release(false), "F12 stays down in an application");
}

TEST_F(KeyPairsTest, ExcuseWhatSecureInputHidOfAPressThatWasSwallowed) {
  press(false);
  mac.setSecureInput(true);
  EXPECT_EQ(release(true), "");
  press(true);
  mac.setSecureInput(false);
  EXPECT_EQ(release(false), "");
  // Only once.
  press(true);
  EXPECT_EQ(release(false), "F12 stays down in an application");
}

// The two presses are those of two keyboards.
TEST_F(KeyPairsTest, SeeAPressThatIsForgottenUnderOneThatWasSwallowed) {
  press(true);
  press(false);
  EXPECT_EQ(release(false), "F12 stays down in an application");
}

}  // namespace
}  // namespace keyrow::reliability
