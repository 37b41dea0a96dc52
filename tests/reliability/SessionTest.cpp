#include "reliability/Session.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include "core/AppIdentifier.h"

namespace keyrow::reliability {
namespace {

using namespace std::chrono_literals;

/// A session with an override in force. Its rules are good for nothing unless they see
/// what is wrong.
class SessionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto* line :
         {"install com.example.one", "launch keyrow", "set global special",
          "set override standard for com.example.one", "front com.example.one"}) {
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

  Session session;
};

TEST_F(SessionTest, SeesNothingWrongWhereNothingIs) {
  EXPECT_EQ(verdict([] {}), "");
  EXPECT_EQ(session.end(), "");
  EXPECT_EQ(session.comparedCount(), 6U);
}

TEST_F(SessionTest, SeesAModeThatTheModelDoesNotExpect) {
  const auto problem = verdict([this] { session.stage.mac.hid.setParameter("HIDFKeyMode", 0); });
  EXPECT_TRUE(problem.starts_with("there is: hardware special,")) << problem;
}

TEST_F(SessionTest, SeesAnOverrideThatWasNeverWritten) {
  session.disturb();
  EXPECT_EQ(verdict([this] {
              setStored("localFnState", PropertyDictionary{{"com.example.one", 1}, {"new", 1}});
            }),
            "an override was stored for new that was never written");
}

TEST_F(SessionTest, SeesAGlobalModeThatWasNeverThere) {
  ASSERT_EQ(session.play("set global standard"), "");
  session.disturb();
  EXPECT_EQ(verdict([this] { setStored("globalFnState", 0); }),
            "a global mode was stored that was never there");
}

TEST_F(SessionTest, SeesAStatusItemThatIsBehind) {
  session.disturb();
  EXPECT_EQ(verdict([this] { session.stage.process()->statusItem().setImage("globe"); }),
            "the status item does not show what was last written or read");
}

TEST_F(SessionTest, SeesAKeyboardThatWasLeftInAnOverride) {
  session.disturb();
  EXPECT_EQ(verdict([this] {
              session.stage.process()->quit();
              session.stage.mac.hid.setParameter("HIDFKeyMode", 1);
            }),
            "the keyboard is not in the global mode");
}

TEST_F(SessionTest, SeesAPreferenceThatWasLeftBehind) {
  session.disturb();
  EXPECT_EQ(verdict([this] {
              session.stage.process()->quit();
              session.stage.mac.globalPreferences.setValue("NSGlobalDomain",
                                                           "com.apple.keyboard.fnState", true);
            }),
            "the system preference is not the global mode");
}

TEST_F(SessionTest, SeesATapThatDiesInSilence) {
  EXPECT_EQ(verdict([this] { session.stage.mac.eventTaps.disableAll(0); }),
            "the event tap is dead, and nobody has said why");
}

TEST_F(SessionTest, SeesWhatIsLeftOpen) {
  session.disturb();
  const sim::OpenHandle forgotten{session.stage.mac.openHandles, "HidConnection",
                                  session.stage.process()->processID()};
  EXPECT_NE(session.play("wait 1ms"), "");
}

}  // namespace
}  // namespace keyrow::reliability
