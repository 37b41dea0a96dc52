#include "app/InstanceTakeover.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

const std::string notExited =
    "app notice: A previous instance did not exit during takeover. Continuing with the current "
    "instance.";
const std::string restored =
    "app notice: Restored the global function key mode before forcing an older instance to exit.";

/// An older instance, which hangs as the test wants, and the new one that is launched.
class InstanceTakeoverTest : public AppDelegateFixture {
 protected:
  std::unique_ptr<SimulatedProcess> older = std::make_unique<SimulatedProcess>(mac, 400);

  void SetUp() override {
    AppDelegateFixture::SetUp();
    mac.applications.activate(safari);
    older->launch();
  }

  /// For a takeover of its own, with another clock.
  InstanceTakeover::Uses usesWith(Clock& clock) {
    const auto& platform = process->platform();
    return {.modePolicy = keyrow().modePolicy(),
            .application = platform.application,
            .bundle = platform.bundle,
            .clock = clock,
            .distributedNotificationCenter = platform.distributedNotificationCenter,
            .mainRunLoop = platform.mainRunLoop,
            .process = platform.process,
            .workspace = platform.workspace,
            .appLog = keyrow().diagnosticsLog().logger(LogCategory::app)};
  }

  /// How long the new instance takes to launch.
  Scheduler::Duration launchTime() {
    const auto start = mac.scheduler.now();
    process->launch();
    return mac.scheduler.now() - start;
  }

  /// What the new instance logged while it forced out the older one, which is unreachable.
  std::vector<std::string> linesOfForcedTakeover() {
    older->hang(Hang::unreachable);
    const auto before = logLines().size();
    process->launch();
    auto lines = logLines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
    return lines;
  }

  void overrideInForce() {
    storeOverride(textEdit, FnState::standard);
    mac.applications.activate(textEdit);
    ASSERT_EQ(mac.hid.modeName(), "standard");
  }

  void post(std::optional<PropertyDictionary> userInfo,
            const std::string& object = std::string{appIdentifier}) {
    mac.distributedNotifications.post(
        {"app.keyrow.Keyrow.instanceTakeover", object, std::move(userInfo)});
    mac.scheduler.runReady();
  }
};

TEST_F(InstanceTakeoverTest, AnInstanceThatAnswersIsGoneAtTheFirstLook) {
  EXPECT_EQ(launchTime(), 20ms);
  EXPECT_TRUE(older->hasEnded());
  EXPECT_FALSE(process->hasEnded());
}

TEST_F(InstanceTakeoverTest, TheOlderInstanceLeavesKeyboardAndPreferenceInTheGlobalMode) {
  setPreference(true);
  mac.applications.activate(textEdit);
  overrideInForce();
  post(PropertyDictionary{{"targetPID", 400}, {"sourcePID", 501}});
  EXPECT_TRUE(older->hasEnded());
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(),
              IsSupersetOf({"state info: Persisted the global function key mode to NSUserDefaults "
                            "for instance takeover: standardFunctionKeys=false"}));
}

TEST_F(InstanceTakeoverTest, TheNoticeNamesTheApplicationBothInstancesAndTheTime) {
  mac.scheduler.advance(5s);
  std::vector<DistributedNotification> notices;
  const auto observer = mac.distributedNotifications.observe(
      [&](const DistributedNotification& notice) { notices.push_back(notice); });
  process->launch();
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(notices[0].name, "app.keyrow.Keyrow.instanceTakeover");
  EXPECT_EQ(notices[0].object, appIdentifier);
  EXPECT_EQ(notices[0].userInfo,
            (PropertyDictionary{
                {"sourcePID", 501}, {"targetPID", 400}, {"time", std::int64_t{5'000'000'000}}}));
}

TEST_F(InstanceTakeoverTest, OneThatReadsTheNoticeInTimeLeavesTheGlobalMode) {
  const auto inTime = std::int64_t{7'000'000'001};
  const auto tooLate = std::int64_t{7'000'000'000};
  // The newer one has ended meanwhile, or nobody knows when that was.
  for (const auto& userInfo :
       {PropertyDictionary{{"targetPID", 400}, {"sourcePID", 400}, {"time", inTime}},
        PropertyDictionary{{"targetPID", 400}, {"sourcePID", 600}, {"time", tooLate}},
        PropertyDictionary{{"targetPID", 400}, {"time", tooLate}},
        PropertyDictionary{{"targetPID", 400}, {"sourcePID", 400}, {"time", "0"}},
        PropertyDictionary{{"targetPID", 400}, {"sourcePID", 400}}}) {
    older = std::make_unique<SimulatedProcess>(mac, 400);
    older->launch();
    overrideInForce();
    mac.scheduler.advance(10s - mac.uptime());
    post(userInfo);
    EXPECT_TRUE(older->hasEnded());
    EXPECT_EQ(mac.hid.modeName(), "special");
    mac.applications.activate(safari);
  }
}

TEST_F(InstanceTakeoverTest, OneThatIsForcedOutIsWaitedForTwoSeconds) {
  older->hang(Hang::unreachable);
  EXPECT_EQ(launchTime(), 2s);
  EXPECT_TRUE(older->hasEnded());
}

TEST_F(InstanceTakeoverTest, OneThatStaysIsWaitedForThreeSeconds) {
  older->hang(Hang::unstoppable);
  EXPECT_EQ(launchTime(), 3s);
  EXPECT_FALSE(older->hasEnded());
  EXPECT_FALSE(process->hasEnded());
  EXPECT_THAT(logLines(), ElementsAre(notExited));
}

/// A clock that does something when it is asked for the time.
class BusyClock final : public Clock {
 public:
  BusyClock(Clock& clock, std::function<void()> work) : clock_{clock}, work_{std::move(work)} {}

  std::chrono::system_clock::time_point now() override { return clock_.now(); }
  std::chrono::nanoseconds uptime() override {
    work_();
    return clock_.uptime();
  }
  std::chrono::nanoseconds timeAsleep() override { return clock_.timeAsleep(); }
  MachTimebase machTimebase() override { return clock_.machTimebase(); }
  std::uint64_t machAbsoluteTime() override { return clock_.machAbsoluteTime(); }

 private:
  Clock& clock_;
  const std::function<void()> work_;
};

TEST_F(InstanceTakeoverTest, OneThatEndsRightAfterTheLastLookIsNotForced) {
  overrideInForce();
  older->hang(Hang::unreachable);
  const auto& platform = process->platform();
  const auto end = mac.scheduler.now() + 2s;
  BusyClock clock{platform.clock, [&] {
                    if (mac.scheduler.now() == end) older->kill();
                  }};
  InstanceTakeover takeover{usesWith(clock)};
  const auto lines = logLines();
  takeover.takeOverPreviousInstances();
  EXPECT_TRUE(older->hasEnded());
  // Forcing it out would bring back the global mode.
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(logLines(), lines);
}

TEST_F(InstanceTakeoverTest, OneThatEndsJustWhenTheTimeIsOverHasExited) {
  older->hang(Hang::unstoppable);
  mac.scheduler.schedule(3s, [this] { older->kill(); });
  EXPECT_EQ(launchTime(), 3s);
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(InstanceTakeoverTest, OneThatTakesTheRequestIsNotForced) {
  older->hang(Hang::reachable);
  mac.trace.start();
  EXPECT_EQ(launchTime(), 3s);
  for (const auto& call : mac.trace.take()) EXPECT_NE(call, "force-terminate 400");
  EXPECT_THAT(logLines(), ElementsAre(notExited));
}

TEST_F(InstanceTakeoverTest, OneThatAnswersLateIsSeenWithinTwentyMilliseconds) {
  older->hang(Hang::reachable);
  mac.scheduler.schedule(1s + 1ms, [this] { older->resume(); });
  EXPECT_EQ(launchTime(), 1s + 20ms);
}

TEST_F(InstanceTakeoverTest, SeveralAreToldInTheirOrder) {
  SimulatedProcess second{mac, 401};
  SimulatedProcess third{mac, 402};
  older->hang(Hang::unstoppable);
  second.launch();
  second.hang(Hang::unstoppable);
  third.launch();
  mac.trace.start();
  process->launch();
  std::vector<std::string> told;
  for (const auto& call : mac.trace.take()) {
    if (call.find("terminate") != std::string::npos || call.starts_with("post")) {
      told.push_back(call);
    }
  }
  const std::string notice = "post app.keyrow.Keyrow.instanceTakeover";
  EXPECT_THAT(told, ElementsAre(notice, "terminate 400", notice, "terminate 401", notice,
                                "terminate 402", "terminate 400", "force-terminate 400",
                                "terminate 401", "force-terminate 401"));
}

TEST_F(InstanceTakeoverTest, ANoticeThatDoesNotNameThisProcessIsIgnored) {
  for (const std::optional<PropertyDictionary>& userInfo :
       std::vector<std::optional<PropertyDictionary>>{
           std::nullopt, PropertyDictionary{}, PropertyDictionary{{"sourcePID", 400}},
           PropertyDictionary{{"targetPID", 401}}, PropertyDictionary{{"targetPID", -400}},
           PropertyDictionary{{"targetPID", "400"}}, PropertyDictionary{{"targetPID", true}},
           PropertyDictionary{{"targetPID", 400.0}},
           PropertyDictionary{{"targetPID", std::int64_t{1} << 32 | 400}}}) {
    post(userInfo);
    EXPECT_FALSE(older->hasEnded());
  }
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(InstanceTakeoverTest, ANoticeAboutAnotherApplicationIsIgnored) {
  post(PropertyDictionary{{"targetPID", 400}}, "com.example.other");
  EXPECT_FALSE(older->hasEnded());
}

TEST_F(InstanceTakeoverTest, WithoutABundleIdentifierNobodyIsTakenOver) {
  SimulatedProcess anonymous{mac, 600, std::nullopt};
  mac.trace.start();
  anonymous.launch();
  for (const auto& call : mac.trace.take()) EXPECT_NE(call, "terminate 400");
  EXPECT_FALSE(older->hasEnded());
  // It hears notices about any application.
  post(PropertyDictionary{{"targetPID", 600}}, "com.example.other");
  EXPECT_TRUE(anonymous.hasEnded());
}

TEST_F(InstanceTakeoverTest, ANewInstanceCanItselfBeTakenOverWhileItWaits) {
  older->hang(Hang::unstoppable);
  SimulatedProcess newest{mac, 502};
  mac.scheduler.schedule(1s, [&newest] { newest.launch(); });
  EXPECT_FALSE(process->launch());
  EXPECT_TRUE(process->hasEnded());
  EXPECT_FALSE(newest.hasEnded());
}

TEST_F(InstanceTakeoverTest, RegisteringTwiceListensOnce) {
  const auto& platform = process->platform();
  InstanceTakeover takeover{usesWith(platform.clock)};
  const auto before = mac.openHandles.count("observer");
  takeover.registerInstanceTakeoverObserver();
  takeover.registerInstanceTakeoverObserver();
  EXPECT_EQ(mac.openHandles.count("observer"), before + 1);
  takeover.removeInstanceTakeoverObserver();
  EXPECT_EQ(mac.openHandles.count("observer"), before);
}

TEST_F(InstanceTakeoverTest, AnOverrideInForceIsUndoneBeforeAnInstanceIsForcedOut) {
  setPreference(false);
  overrideInForce();
  EXPECT_THAT(linesOfForcedTakeover(), ElementsAre(restored));
}

TEST_F(InstanceTakeoverTest, ThePreferenceOutweighsTheStoredMode) {
  setPreference(true);
  mac.applications.activate(textEdit);
  overrideInForce();
  takeWrittenModes();
  // The keyboard is in the mode that the preference names, so there is nothing to do.
  EXPECT_THAT(linesOfForcedTakeover(), ElementsAre());
}

TEST_F(InstanceTakeoverTest, WithoutAPreferenceTheStoredModeIsRestored) {
  overrideInForce();
  EXPECT_THAT(linesOfForcedTakeover(), ElementsAre(restored));
}

TEST_F(InstanceTakeoverTest, WithoutAnyGlobalModeNothingIsRestored) {
  overrideInForce();
  store("globalFnState", std::nullopt);
  setPreference(std::nullopt);
  takeWrittenModes();
  linesOfForcedTakeover();
  // Only the launch itself applies the override, once more.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
}

TEST_F(InstanceTakeoverTest, WithoutAnApplicationInFrontNothingIsRestored) {
  overrideInForce();
  older->hang(Hang::unreachable);
  mac.applications.activate(std::nullopt);
  takeWrittenModes();
  process->launch();
  // Only the launch itself applies the mode.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(0));
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(InstanceTakeoverTest, WithoutAnOverrideInFrontNothingIsRestored) {
  setHardware(FnState::standard);
  EXPECT_THAT(linesOfForcedTakeover(), ElementsAre());
}

TEST_F(InstanceTakeoverTest, AFailedReadIsLoggedAndTheTakeoverGoesOn) {
  overrideInForce();
  mac.faults.fail(PortCall::readServiceProperty, 1);
  EXPECT_THAT(linesOfForcedTakeover(),
              ElementsAre("app error: Failed to read the current function key mode before forcing "
                          "an older instance to exit: Failed to read the function key mode."));
  EXPECT_TRUE(older->hasEnded());
  EXPECT_FALSE(process->hasEnded());
}

TEST_F(InstanceTakeoverTest, AFailedWriteIsLoggedAndTheTakeoverGoesOn) {
  overrideInForce();
  mac.faults.fail(PortCall::setHidParameter, 1);
  EXPECT_THAT(linesOfForcedTakeover(),
              ElementsAre("app error: Failed to restore the global function key mode before "
                          "forcing an older instance to exit: Failed to write the function key "
                          "mode."));
  EXPECT_TRUE(older->hasEnded());
}

}  // namespace
}  // namespace keyrow::sim
