#include "tool/Tool.h"

#include <gmock/gmock.h>

#include "core/AppIdentifier.h"
#include "core/Request.h"
#include "core/Status.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The command beside a Keyrow that hangs, for which the test answers.
class ToolTest : public ::testing::Test {
 protected:
  ToolTest() {
    stage_.launchKeyrow();
    stage_.process()->hang(Hang::reachable);
    stage_.beginAction();
  }

  void run(const std::vector<std::string>& arguments) {
    stage_.startTool(/*isRoot=*/false).run(arguments);
    pass(0s);
  }

  void pass(std::chrono::nanoseconds time) { stage_.mac.scheduler.advance(time); }

  void answer(const keyrow::Answer& answer) { post(answer, numbers_); }

  void post(keyrow::Answer answer, std::vector<std::string> numbers) {
    answer.numbers = std::move(numbers);
    stage_.mac.distributedNotifications.post({.name = std::string{requestNotification::answer},
                                              .object = std::string{appIdentifier},
                                              .userInfo = userInfo(answer),
                                              .user = stage_.mac.sessions.active()});
    pass(0s);
  }

  static keyrow::Answer standard() {
    Status status;
    status.global = FnState::standard;
    keyrow::Answer answer;
    answer.status = propertyDictionary(status);
    return answer;
  }

  std::optional<int> exitStatus() { return stage_.toolExitStatus(); }

  std::vector<std::string> output() {
    std::vector<std::string> lines;
    for (const auto& event : stage_.recentTimeline()) {
      if (event.kind == TimelineEvent::Kind::output) lines.push_back(textOf(event));
    }
    return lines;
  }

 private:
  Stage stage_;
  std::vector<std::string> numbers_;
  Registration requests_{stage_.mac.distributedNotifications.observe(
      [this](const DistributedNotification& notification) {
        if (notification.name != requestNotification::request) return;
        if (const auto request = requestFrom(notification.userInfo)) {
          numbers_.push_back(request->number);
        }
      })};
};

TEST_F(ToolTest, WaitsForWhatKeyrowHasBegun) {
  run({"mode", "standard"});
  answer({});
  pass(5s);
  EXPECT_EQ(exitStatus(), std::nullopt);
  answer(standard());
  EXPECT_EQ(exitStatus(), tool::exitStatus::done);
  EXPECT_THAT(output(), ElementsAre("output \"The global mode is standard.\""));
}

TEST_F(ToolTest, KnowsThatAnotherKeyrowRunsWhereTheOneItWatchedIsGone) {
  run({"watch", "--json"});
  Status::Running running;
  running.processIdentifier = 400;
  Status status;
  status.running = running;
  keyrow::Answer ended;
  ended.status = propertyDictionary(status);
  answer(ended);
  EXPECT_THAT(output(), ElementsAre(HasSubstr(R"(\"keyrow\":{\"process\":400,)")));
  pass(1s);
  ASSERT_EQ(output().size(), 2U);
  EXPECT_THAT(output().back(), HasSubstr(R"(\"keyrowRuns\":true,\"keyrow\":null)"));
}

TEST_F(ToolTest, SaysThatWhatKeyrowHasBegunDoesNotEnd) {
  run({"mode", "standard"});
  answer({});
  pass(10s);
  EXPECT_EQ(exitStatus(), tool::exitStatus::couldNot);
  EXPECT_THAT(
      output(),
      ElementsAre("output error \"keyrow: Keyrow has begun, and does not come to an end.\""));
}

TEST_F(ToolTest, ListensToItsOwnAnswersOnly) {
  run({"mode", "standard"});
  post(standard(), {"1"});
  EXPECT_EQ(exitStatus(), std::nullopt);
  pass(2s);
  EXPECT_EQ(exitStatus(), tool::exitStatus::couldNot);
  answer(standard());
  EXPECT_THAT(output(), ElementsAre("output error \"keyrow: Keyrow does not answer.\""));
}

}  // namespace
}  // namespace keyrow::sim
