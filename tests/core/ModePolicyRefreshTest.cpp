#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/HidSystem.h"
#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Bringing the known mode up to date with the hardware.
class ModePolicyRefreshTest : public ModePolicyTest {
 protected:
  /// Lets the next reads fail, all with the very first call that they make.
  void failReads(std::uint64_t times) { mac.faults.fail(PortCall::findService, times); }

  /// How many reads were tried and failed.
  std::size_t failedReads() const {
    return static_cast<std::size_t>(std::ranges::count(happenings, "fault find-service"));
  }

  /// Waits until just before the delay is over, and then until it is; checks that the
  /// retry comes with that last nanosecond.
  void expectRetryAfter(std::chrono::nanoseconds delay) {
    const auto before = failedReads();
    mac.scheduler.advance(delay - 1ns);
    EXPECT_EQ(failedReads(), before);
    mac.scheduler.advance(1ns);
    EXPECT_EQ(failedReads(), before + 1);
  }
};

TEST_F(ModePolicyRefreshTest, ShowsAModeThatIsNew) {
  setHardware(FnState::standard);
  beginHere();
  policy().refreshFromHardware();
  EXPECT_THAT(happenings, ElementsAre("show standard"));
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
  EXPECT_FALSE(policy().isLocalScopeActive());

  setHardware(FnState::special);
  beginHere();
  policy().refreshFromHardware();
  EXPECT_THAT(happenings, ElementsAre("show special"));
}

TEST_F(ModePolicyRefreshTest, ShowsNothingWhenTheModeIsKnown) {
  policy().refreshFromHardware();
  beginHere();
  policy().refreshFromHardware();
  EXPECT_THAT(happenings, IsEmpty());
}

TEST_F(ModePolicyRefreshTest, NeitherWritesNorStoresNorLeavesTheScope) {
  applyOverrideOfTextEdit(FnState::standard);
  setHardware(FnState::special);
  beginHere();
  policy().refreshFromHardware();
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyRefreshTest, RetriesThreeTimesEachTimeLaterAndThenGivesUpSilently) {
  failReads(Faults::always);
  policy().refreshFromHardware();
  EXPECT_EQ(failedReads(), 1U);
  expectRetryAfter(350ms);
  expectRetryAfter(700ms);
  expectRetryAfter(1050ms);
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 4U);
  EXPECT_THAT(newLogLines(), IsEmpty());
  EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
}

TEST_F(ModePolicyRefreshTest, StopsRetryingAtTheFirstReadThatWorks) {
  setHardware(FnState::standard);
  for (const std::uint64_t failures : {1U, 2U, 3U}) {
    restart();
    failReads(failures);
    beginHere();
    policy().refreshFromHardware();
    const auto waited = 350ms * static_cast<int>(failures * (failures + 1) / 2);
    mac.scheduler.advance(waited - 1ns);
    EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
    mac.scheduler.advance(1ns);
    EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);

    failReads(Faults::always);
    mac.scheduler.advance(1h);
    EXPECT_EQ(failedReads(), failures);
    mac.faults.clear();
  }
}

TEST_F(ModePolicyRefreshTest, ShowsTheModeThatARetryFinds) {
  failReads(1);
  policy().refreshFromHardware();
  beginHere();
  mac.scheduler.advance(350ms);
  EXPECT_THAT(happenings, ElementsAre("show special"));
}

TEST_F(ModePolicyRefreshTest, RetriesWhateverKeepsItFromReading) {
  mac.hid.setParameter(hidFKeyModeKey, 2);
  policy().refreshFromHardware();
  setHardware(FnState::standard);
  mac.scheduler.advance(350ms);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);

  mac.faults.fail(PortCall::readServiceProperty, 1);
  setHardware(FnState::special);
  policy().refreshFromHardware();
  mac.scheduler.advance(350ms);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::special);
}

TEST_F(ModePolicyRefreshTest, HasAllItsRetriesAgainAfterAReadThatWorked) {
  failReads(3);
  policy().refreshFromHardware();
  mac.scheduler.advance(1h);
  ASSERT_EQ(policy().lastKnownFnState(), FnState::special);

  failReads(Faults::always);
  beginHere();
  policy().refreshFromHardware();
  expectRetryAfter(350ms);
  expectRetryAfter(700ms);
  expectRetryAfter(1050ms);
}

TEST_F(ModePolicyRefreshTest, HasNoRetriesLeftAfterGivingUpUntilAReadWorks) {
  failReads(Faults::always);
  policy().refreshFromHardware();
  mac.scheduler.advance(1h);
  beginHere();
  policy().refreshFromHardware();
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 1U);

  mac.faults.clear();
  policy().refreshFromHardware();
  failReads(Faults::always);
  beginHere();
  policy().refreshFromHardware();
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 4U);
}

TEST_F(ModePolicyRefreshTest, CountsAFailureAtOnceSoThatASecondRequestWaitsLonger) {
  failReads(Faults::always);
  policy().refreshFromHardware();
  mac.scheduler.advance(100ms);
  policy().refreshFromHardware();
  // The second request's retry is due at 0.8 s; the first one's comes at 0.35 s, fails,
  // and adds the last one, 1.05 s later.
  beginHere();
  expectRetryAfter(250ms);
  expectRetryAfter(450ms);
  expectRetryAfter(600ms);
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 3U);
}

TEST_F(ModePolicyRefreshTest, StillMakesAPendingRetryWhenAnotherReadWorksMeanwhile) {
  failReads(1);
  policy().refreshFromHardware();
  mac.scheduler.advance(100ms);
  policy().refreshFromHardware();
  ASSERT_EQ(policy().lastKnownFnState(), FnState::special);
  setHardware(FnState::standard);
  mac.scheduler.advance(250ms);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
}

TEST_F(ModePolicyRefreshTest, StillMakesAPendingRetryWhenAnotherReadFailsAnewMeanwhile) {
  failReads(1);
  policy().refreshFromHardware();
  mac.scheduler.advance(100ms);
  policy().refreshFromHardware();
  failReads(1);
  mac.scheduler.advance(100ms);
  policy().refreshFromHardware();
  setHardware(FnState::standard);
  mac.scheduler.advance(150ms);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
}

TEST_F(ModePolicyRefreshTest, CountsNoFailureOfOtherReads) {
  failReads(3);
  for (int read = 0; read < 3; ++read) policy().storedGlobalFnState();
  failReads(Faults::always);
  beginHere();
  policy().refreshFromHardware();
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 4U);
}

TEST_F(ModePolicyRefreshTest, RetriesAfterApplyingFindsNoMode) {
  failReads(Faults::always);
  policy().applyStoredFnState();
  // One read for the stored mode, one for the refresh.
  EXPECT_EQ(failedReads(), 2U);
  expectRetryAfter(350ms);
}

TEST_F(ModePolicyRefreshTest, LetsGoOfAPendingRetryWhenTheProcessEnds) {
  failReads(Faults::always);
  policy().refreshFromHardware();
  process.reset();
  beginHere();
  mac.scheduler.advance(1h);
  EXPECT_EQ(failedReads(), 0U);
}

/// Counts the delayed calls that somebody holds on to, whether they have run or not.
class HeldCallsQueue final : public MainQueue {
 public:
  explicit HeldCallsQueue(MainQueue& queue) : queue_{queue} {}

  void async(std::function<void()> work) override { queue_.async(std::move(work)); }
  DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) override {
    auto call = std::make_shared<DelayedCall>(queue_.after(delay, std::move(work)));
    ++held;
    return DelayedCall{[this, call = std::move(call)] { --held; }};
  }

  int held = 0;

 private:
  MainQueue& queue_;
};

TEST_F(ModePolicyRefreshTest, ForgetsARetryThatHasRun) {
  HeldCallsQueue queue{process->platform().mainQueue};
  StoredFnStates storedModes{process->platform().userDefaults};
  ModePolicy patient{{.fnStateController = keyrow().fnStateController(),
                      .storedFnStates = storedModes,
                      .settings = keyrow().settings(),
                      .workspace = process->platform().workspace,
                      .mainQueue = queue,
                      .clock = process->platform().clock,
                      .presenter = keyrow().statusBarController(),
                      .stateLog = keyrow().diagnosticsLog().logger(LogCategory::state),
                      .appLog = keyrow().diagnosticsLog().logger(LogCategory::app)}};
  failReads(1);
  patient.refreshFromHardware();
  EXPECT_EQ(queue.held, 1);
  mac.scheduler.advance(1s);
  EXPECT_EQ(queue.held, 0);
}

}  // namespace
}  // namespace keyrow::sim
