#include "platform/HidSystem.h"
#include "reliability/Session.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "core/AppIdentifier.h"
#include "core/StateLogTexts.h"

namespace keyrow::reliability {
namespace {

using namespace std::chrono_literals;

/// A session with an override in force. Its rules are good for nothing unless they see
/// what is wrong.
class SessionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto* line : {"install com.example.one", "launch keyrow", "front com.example.one",
                             "click right", "choose \"Use F1-F12 in This App Only\""}) {
      ASSERT_EQ(session.play(line), "") << line;
    }
  }

  /// What the session says of something that happens behind its back.
  std::string verdict(std::function<void()> mischief) {
    session.stage.mac.scheduler.schedule(1ms, std::move(mischief));
    return session.play("wait 2ms");
  }

  void setStored(std::string_view key, PropertyValue value) {
    session.stage.mac.defaults.setValue(std::string{appIdentifier}, key, std::move(value));
  }

  void setHardware(int mode) { session.stage.mac.hid.setParameter(hidFKeyModeKey, mode); }

  Session session;
};

TEST_F(SessionTest, SeesNothingWrongWhereNothingIs) {
  EXPECT_EQ(verdict([] {}), "");
  EXPECT_EQ(session.end(), "");
}

TEST_F(SessionTest, SeesAChosenModeThatIsLost) {
  ASSERT_EQ(session.play("click right"), "");
  ASSERT_EQ(session.play("choose \"Use F1-F12 by Default\""), "");
  EXPECT_EQ(session.promisedCount(), 1U);
  const auto problem = verdict([this] { setStored("globalFnState", 0); });
  EXPECT_TRUE(problem.starts_with("the chosen mode is standard, but there is: ")) << problem;
}

TEST_F(SessionTest, SeesAtTheEndThatAChosenModeIsLost) {
  ASSERT_EQ(session.play("sleep"), "");
  ASSERT_EQ(session.play("system-settings standard"), "");
  session.stage.mac.changeModeInSystemSettings(false);
  EXPECT_EQ(session.end(), "the chosen mode of me is lost at the end");
}

TEST_F(SessionTest, SeesAKeyboardThatIsInTheWrongMode) {
  ASSERT_EQ(session.play("sleep"), "");
  ASSERT_EQ(session.play("system-settings standard"), "");
  ASSERT_EQ(session.play("wake"), "");
  ASSERT_EQ(session.play("front com.apple.finder"), "");
  ASSERT_EQ(session.play("sleep"), "");
  session.stage.mac.scheduler.schedule(0ms, [this] { setHardware(0); });
  const auto problem = session.play("wake");
  EXPECT_TRUE(problem.starts_with("the keyboard is not in the mode of the application in front"))
      << problem;
}

TEST_F(SessionTest, SeesAFlipThatChangesNothing) {
  ASSERT_EQ(session.play("front com.apple.finder"), "");
  ASSERT_EQ(session.play("press fn+escape on none"), "");
  ASSERT_EQ(session.play("press fn+escape on none"), "");
  session.stage.mac.scheduler.schedule(0ms, [this] {
    session.stage.process()
        ->keyrow()
        .diagnosticsLog()
        .logger(LogCategory::state)
        .notice(std::string{stateLogText::setGlobal} + std::string{modeText(FnState::special)});
  });
  EXPECT_EQ(session.play("click right"), "a flip has changed nothing");
}

TEST_F(SessionTest, SeesAnOverrideThatWasNeverWritten) {
  session.disturb();
  EXPECT_EQ(verdict([this] {
              setStored("localFnState", PropertyDictionary{{"com.example.one", 1}, {"new", 1}});
            }),
            "an override was stored for new that was never written");
}

TEST_F(SessionTest, SeesAGlobalModeThatWasNeverThere) {
  ASSERT_EQ(session.play("click right"), "");
  ASSERT_EQ(session.play("choose \"Use F1-F12 by Default\""), "");
  session.disturb();
  EXPECT_EQ(verdict([this] { setStored("globalFnState", 0); }),
            "a global mode was stored that was never there");
}

// What could not be synchronized is still what Keyrow itself sees, long after.
TEST_F(SessionTest, LetsAPreferenceBeAdoptedThatNobodyElseHasSeen) {
  for (const auto* line : {"front com.apple.finder", "fail open-connection always",
                           "fail synchronize-preferences", "sleep", "hardware HIDParameters=none",
                           "defaults delete globalFnState", "front com.apple.systempreferences"}) {
    EXPECT_EQ(session.play(line), "") << line;
  }
}

TEST_F(SessionTest, SeesAStatusItemThatIsBehind) {
  session.disturb();
  EXPECT_EQ(verdict([this] { session.stage.process()->statusItem().setImage("globe"); }),
            "the status item does not show what was last written or read");
}

TEST_F(SessionTest, SeesAnOverrideThatBecomesTheGlobalMode) {
  session.disturb();
  EXPECT_EQ(verdict([this] {
              setStored("globalFnState", 1);
              session.stage.process()
                  ->keyrow()
                  .diagnosticsLog()
                  .logger(LogCategory::state)
                  .notice(stateLogText::synchronizedGlobal);
            }),
            "an override became the global mode");
}

// A Keyrow that hung catches up: it has set the global mode, though it could not store it,
// before it adopts what it finds.
TEST_F(SessionTest, LetsAGlobalModeBeAdoptedThatWasChosenInTheSameLine) {
  ASSERT_EQ(session.play("install com.example.two"), "");
  for (const auto* line : {"hang keyrow 501", "press fn+escape on none", "front com.example.two",
                           "press fn+escape on none", "press fn+escape on none",
                           "fail write-defaults", "resume keyrow 501"}) {
    EXPECT_EQ(session.play(line), "") << line;
  }
}

TEST_F(SessionTest, SeesAnOverrideThatIsLost) {
  session.disturb();
  EXPECT_EQ(verdict([this] { setStored("localFnState", PropertyDictionary{}); }),
            "the override of com.example.one is lost");
}

TEST_F(SessionTest, LetsTheOverrideOfARemovedApplicationGo) {
  EXPECT_EQ(session.play("uninstall com.example.one"), "");
  for (const auto* line : {"quit keyrow", "launch keyrow", "wait 1min", "quit keyrow"}) {
    EXPECT_EQ(session.play(line), "") << line;
  }
  EXPECT_TRUE(session.stage.storedFnStates().localBundleIdentifiers().empty());
}

TEST_F(SessionTest, SeesThatAnotherUsersChosenModeIsLost) {
  for (const auto* line :
       {"front com.apple.finder", "click", "user anna", "launch keyrow", "quit keyrow 501"}) {
    ASSERT_EQ(session.play(line), "") << line;
  }
  EXPECT_EQ(verdict([this] { setStored("globalFnState", 0); }), "");
  EXPECT_EQ(session.end(), "the chosen mode of me is lost at the end");
}

TEST_F(SessionTest, SeesAKeyboardThatIsLeftInAnOverride) {
  session.disturb();
  EXPECT_EQ(verdict([this] { session.stage.mac.whenKeyrowQuits("me"); }),
            "the system preference is not the global mode");
  EXPECT_EQ(verdict([this] {
              session.stage.mac.changeModeInSystemSettings(false);
              session.stage.mac.hid.setParameter(hidFKeyModeKey, 1);
              session.stage.mac.whenKeyrowQuits("me");
            }),
            "the keyboard is not in the global mode");
}

TEST_F(SessionTest, SeesThatATakeoverLeavesTheKeyboardToTheNewInstance) {
  EXPECT_EQ(session.play("launch keyrow"), "");
  EXPECT_EQ(session.stage.runningCount(), 1);
  EXPECT_EQ(session.stage.mac.hid.modeName(), "standard");
}

TEST_F(SessionTest, SeesALaunchWithoutATap) {
  ASSERT_EQ(session.play("quit keyrow"), "");
  session.stage.mac.scheduler.schedule(0ms, [this] { session.stage.mac.eventTaps.disableAll(0); });
  EXPECT_EQ(session.play("launch keyrow"), "there is no event tap, and nobody has said why");
}

TEST_F(SessionTest, SeesATapThatDoesNotWakeUp) {
  ASSERT_EQ(session.play("disable tap silently"), "");
  ASSERT_EQ(session.play("sleep"), "");
  session.stage.mac.scheduler.schedule(0ms, [this] { session.stage.mac.eventTaps.disableAll(0); });
  EXPECT_EQ(session.play("wake"), "there is no event tap, and nobody has said why");
}

TEST_F(SessionTest, SeesATapThatDiesInSilence) {
  EXPECT_EQ(verdict([this] { session.stage.mac.eventTaps.disableAll(0); }),
            "the event tap is dead, and nobody has said why");
}

TEST_F(SessionTest, LetsATapGoThatHasLostItsPermission) {
  for (const auto* line : {"revoke accessibility", "wait 5s", "sleep", "wake", "front none"}) {
    EXPECT_EQ(session.play(line), "") << line;
  }
  EXPECT_EQ(session.end(), "");
}

TEST_F(SessionTest, SeesATapThatLivesWithoutTrust) {
  auto& mac = session.stage.mac;
  const auto makeAnother = [&mac] { mac.eventTaps.insert(std::make_shared<sim::ServedTap>()); };
  ASSERT_EQ(session.play("revoke accessibility"), "");
  mac.scheduler.schedule(5s, makeAnother);
  EXPECT_EQ(session.play("wait 5s"), "a tap lives without trust");
}

TEST_F(SessionTest, SeesATapThatIsNotLookedAtWhenItShouldBe) {
  auto& mac = session.stage.mac;
  const auto makeAnother = [&mac] { mac.eventTaps.insert(std::make_shared<sim::ServedTap>()); };
  for (const auto* line : {"front com.apple.finder", "wake"}) {
    for (const auto* preparation : {"grant accessibility", "wait 1s", "sleep",
                                    "revoke accessibility unannounced", "wait 1s"}) {
      session.play(preparation);
    }
    mac.scheduler.schedule(0s, makeAnother);
    EXPECT_EQ(session.play(line), "a tap lives without trust");
    mac.eventTaps.disableAll(0);
  }
}

TEST_F(SessionTest, SeesATapThatDoesNotComeBack) {
  auto& mac = session.stage.mac;
  const auto awake = mac.power.observeDidWake(
      [&mac] { mac.scheduler.schedule(0s, [&mac] { mac.eventTaps.disableAll(0); }); });
  EXPECT_EQ(session.end(), "the event tap does not come back");
}

TEST_F(SessionTest, SeesATopRowThatDoesNotGoByItsKeyboardsMode) {
  for (const auto* line :
       {"keyboard usb vendor=0x046d product-id=0xc33f transport=USB built-in=false",
        "defaults write applyFnModeToExternalFunctionKeys true",
        "defaults write keyboardFnStates 046d:c33f=0", "press f8 on usb", "wait 1ms"}) {
    ASSERT_EQ(session.play(line), "") << line;
  }
  // The key comes right after its input.
  int mode = 1;
  const auto mischief = session.stage.mac.keyboards.observeInput(
      [&](const auto&) { setStored("keyboardFnStates", PropertyDictionary{{"046d:c33f", mode}}); });
  EXPECT_EQ(session.play("press f8 on usb"),
            "F8 reached an application against the mode of its keyboard");
  mode = 0;
  EXPECT_EQ(session.play("hold f8 on usb"),
            "F8 did not reach an application against the mode of its keyboard");
  // Where another keyboard has sent an input in the same moment, it may be that one's.
  for (const auto* line : {"release f8 on usb", "wait 1ms", "keyboard internal built-in=true",
                           "press a on internal", "press f8 on usb"}) {
    EXPECT_EQ(session.play(line), "") << line;
  }
}

TEST_F(SessionTest, SeesWhatIsLeftOpen) {
  session.disturb();
  const sim::OpenHandle forgotten{session.stage.mac.openHandles, "HidConnection",
                                  session.stage.process()->processID()};
  EXPECT_NE(session.play("wait 1ms"), "");
}

TEST_F(SessionTest, SeesManagersThatPileUp) {
  session.disturb();
  const auto processID = session.stage.process()->processID();
  const sim::OpenHandle second{session.stage.mac.openHandles, "HidManager", processID};
  EXPECT_EQ(session.play("wait 1ms"), "");
  const sim::OpenHandle third{session.stage.mac.openHandles, "HidManager", processID};
  EXPECT_EQ(session.play("wait 1ms"), "3 of HidManager are open");
}

}  // namespace
}  // namespace keyrow::reliability
