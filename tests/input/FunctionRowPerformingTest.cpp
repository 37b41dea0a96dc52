#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "tests/input/KeyEventFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace keyEventType;

class FunctionRowPerformingTest : public KeyEventFixture {
 protected:
  void SetUp() override {
    KeyEventFixture::SetUp();
    store("applyFnModeToExternalFunctionKeys", true);
    mac.timeline.setListener([this](const TimelineEvent& event) {
      if (event.kind != TimelineEvent::Kind::key) return;
      // Without its quotation marks.
      const auto& text = event.terms.front();
      keys_.push_back(text.substr(1, text.size() - 2));
    });
  }

  ExternalKeyboardFunctionRowMapper& mapper() { return keyrow().functionRowMapper(); }

  /// What the keys came to since the last call.
  std::vector<std::string> takeKeys() { return std::exchange(keys_, {}); }

 private:
  std::vector<std::string> keys_;
};

TEST_F(FunctionRowPerformingTest, AMediaKeyIsPressedAndReleasedWithItsKey) {
  EXPECT_FALSE(passes(keyDown, 98));
  EXPECT_TRUE(mac.systemDefinedEvents.empty());
  mac.scheduler.runReady();
  EXPECT_FALSE(passesAndRuns(keyUp, 98));
  ASSERT_EQ(mac.systemDefinedEvents.size(), 2U);
  const auto& press = mac.systemDefinedEvents[0];
  EXPECT_EQ(press.modifierFlags, 0xA00U);
  EXPECT_EQ(press.subtype, 8);
  EXPECT_EQ(press.data1, 18 << 16 | 0xA00);
  EXPECT_EQ(press.data2, -1);
  const auto& release = mac.systemDefinedEvents[1];
  EXPECT_EQ(release.modifierFlags, 0xB00U);
  EXPECT_EQ(release.subtype, 8);
  EXPECT_EQ(release.data1, 18 << 16 | 0xB00);
  EXPECT_EQ(release.data2, 0);
}

TEST_F(FunctionRowPerformingTest, MissionControlOpensOnceWhenTheKeyGoesDown) {
  EXPECT_FALSE(passesAndRuns(keyDown, 99));
  EXPECT_FALSE(passesAndRuns(keyUp, 99));
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre("/System/Applications/Mission Control.app"));
}

// The tap's thread calls them, and every key waits for that.
TEST_F(FunctionRowPerformingTest, WhatIsOpenedIsOpenedFromTheMainQueue) {
  mapper().openApplication("/Applications/One.app");
  mapper().openURL("keyrow:two", std::nullopt);
  mac.faults.fail(PortCall::openURL, 1, 1);
  mapper().openURL("keyrow:three", "/Applications/Three.app");
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre());
  mac.scheduler.runReady();
  EXPECT_THAT(mac.screen.openedURLs(),
              ElementsAre("/Applications/One.app", "keyrow:two", "/Applications/Three.app"));
}

TEST_F(FunctionRowPerformingTest, SpotlightIsTypedOnceWhenTheKeyGoesDown) {
  EXPECT_FALSE(passesAndRuns(keyDown, 118));
  EXPECT_THAT(takeKeys(), ElementsAre("left-command down with command reaches com.apple.TextEdit",
                                      "Space down with command reaches com.apple.TextEdit",
                                      "Space up with command reaches com.apple.TextEdit",
                                      "left-command up reaches com.apple.TextEdit"));
  EXPECT_FALSE(passesAndRuns(keyUp, 118));
  EXPECT_THAT(takeKeys(), ElementsAre());
}

TEST_F(FunctionRowPerformingTest, ModifiersArePressedInOrderAndReleasedInReverse) {
  mapper().postKeyStroke(keyA, keyEventFlag::control | keyEventFlag::option | keyEventFlag::shift |
                                   keyEventFlag::command);
  EXPECT_THAT(takeKeys(), ElementsAre());
  mac.scheduler.runReady();
  const std::string to = " reaches com.apple.TextEdit";
  EXPECT_THAT(takeKeys(), ElementsAre("left-control down with control" + to,
                                      "left-option down with control+option" + to,
                                      "left-shift down with control+option+shift" + to,
                                      "left-command down with control+option+shift+command" + to,
                                      "A down with control+option+shift+command" + to,
                                      "A up with control+option+shift+command" + to,
                                      "left-command up with control+option+shift" + to,
                                      "left-shift up with control+option" + to,
                                      "left-option up with control" + to, "left-control up" + to));
}

TEST_F(FunctionRowPerformingTest, EveryCombinationOfModifiersEndsWithNoneHeld) {
  for (unsigned combination = 0; combination < 16; ++combination) {
    std::uint64_t flags = 0;
    std::size_t count = 0;
    for (unsigned bit = 0; bit < 4; ++bit) {
      if ((combination >> bit & 1) == 0) continue;
      flags |= keyEventFlag::shift << bit;
      ++count;
    }
    mapper().postKeyStroke(keyA, flags);
    mac.scheduler.runReady();
    const auto typed = takeKeys();
    ASSERT_EQ(typed.size(), 2 + 2 * count) << combination;
    EXPECT_THAT(typed.back(), Not(HasSubstr("with"))) << combination;
  }
}

TEST_F(FunctionRowPerformingTest, WithoutAnEventSourceNothingIsTyped) {
  mac.faults.fail(PortCall::createKeyEventSource, 1);
  EXPECT_FALSE(passesAndRuns(keyDown, 118));
  EXPECT_THAT(takeKeys(), ElementsAre());
}

TEST_F(FunctionRowPerformingTest, AURLThatDoesNotOpenIsReplacedByAnApplicationIfThereIsOne) {
  mapper().openURL("https://keyrow.example", "/Applications/Some.app");
  mac.scheduler.runReady();
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre("https://keyrow.example"));
  mac.faults.fail(PortCall::openURL, Faults::always);
  mapper().openURL("https://keyrow.example", std::nullopt);
  mac.scheduler.runReady();
  EXPECT_EQ(mac.screen.openedURLs().size(), 1U);
  mapper().openURL("https://keyrow.example", "/Applications/Some.app");
  mac.scheduler.runReady();
  EXPECT_THAT(mac.screen.openedURLs().back(), "/Applications/Some.app");
}

TEST_F(FunctionRowPerformingTest, AURLOpensOnceWhenTheKeyGoesDown) {
  const OpenURLAction action{
      .url = "https://keyrow.example", .fallbackApp = std::nullopt, .label = "Keyrow"};
  mapper().perform(action, KeyStep::press);
  mapper().perform(action, KeyStep::repeat);
  mapper().perform(action, KeyStep::release);
  mac.scheduler.runReady();
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre("https://keyrow.example"));
}

TEST_F(FunctionRowPerformingTest, TheLogTellsWhyOnlyWithEnhancedDiagnostics) {
  const std::string line =
      "input debug: Evaluated F7: translate mode=0 fnPressed=false source=external keyboard, "
      "transport=USB";
  passesAndRuns(keyDown, 98);
  EXPECT_THAT(logLines(), Not(Contains(line)));
  store("enhancedDiagnosticsEnabled", true);
  passesAndRuns(keyDown, 98);
  EXPECT_THAT(logLines(), Contains(line));
  const auto before = logLines().size();
  passesAndRuns(keyDown, keyA);
  EXPECT_EQ(logLines().size(), before);
}

TEST_F(FunctionRowPerformingTest, InTheStandardModeTheKeysPass) {
  setHardware(FnState::standard);
  for (const int keyCode : {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111}) {
    EXPECT_TRUE(passesAndRuns(keyDown, static_cast<std::uint16_t>(keyCode))) << keyCode;
    EXPECT_TRUE(passesAndRuns(keyUp, static_cast<std::uint16_t>(keyCode))) << keyCode;
  }
  EXPECT_TRUE(mac.systemDefinedEvents.empty());
}

}  // namespace
}  // namespace keyrow::sim
