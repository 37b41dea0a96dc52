#include "core/Request.h"

#include <gmock/gmock.h>

#include "core/Status.h"

namespace keyrow {
namespace {

using ::testing::ElementsAre;

TEST(RequestTest, ComesOutOfANotificationAsItWentIn) {
  const Request request{.number = "9001-5-1",
                        .time = std::chrono::nanoseconds{5},
                        .kind = Request::Kind::setOverride,
                        .subject = "com.apple.TextEdit",
                        .value = "standard"};
  EXPECT_EQ(requestFrom(userInfo(request)), request);
}

TEST(RequestTest, IsNothingWhereSomethingIsMissingOrOdd) {
  EXPECT_EQ(requestFrom(std::nullopt), std::nullopt);
  const auto whole = userInfo(Request{.number = "1"});
  for (const auto& [key, value] : whole) {
    auto lacking = whole;
    lacking.erase(key);
    EXPECT_EQ(requestFrom(lacking), std::nullopt) << key;
    auto odd = whole;
    odd.insert_or_assign(key, PropertyDictionary{});
    EXPECT_EQ(requestFrom(odd), std::nullopt) << key;
  }
  auto unknown = whole;
  unknown.insert_or_assign("request", "make coffee");
  EXPECT_EQ(requestFrom(unknown), std::nullopt);
}

TEST(AnswerTest, ComesOutOfANotificationAsItWentIn) {
  Status status;
  status.global = FnState::standard;
  const Answer answer{
      .numbers = {"1", "2"}, .problem = "No.", .status = propertyDictionary(status)};
  const auto back = answerFrom(userInfo(answer));
  ASSERT_TRUE(back);
  EXPECT_THAT(back->numbers, ElementsAre("1", "2"));
  EXPECT_EQ(back->problem, "No.");
  EXPECT_EQ(back->status, answer.status);
  EXPECT_TRUE(back->answers("2"));
  EXPECT_FALSE(back->answers("3"));
  EXPECT_FALSE(answerFrom(PropertyDictionary{}));
  EXPECT_FALSE(answerFrom(std::nullopt));
}

TEST(StatusTest, ComesOutOfADictionaryAsItWentIn) {
  Status status{.mode = FnState::standard,
                .source = Status::Source::override_,
                .application = "com.apple.TextEdit",
                .global = FnState::special,
                .overrides = {{"com.apple.TextEdit", FnState::standard}},
                .keyboardModes = {{"046d:c33f", FnState::special}},
                .translatesTopRows = true,
                .settings = {{"shortcut", "F5"}},
                .running = Status::Running{.processIdentifier = 501,
                                           .isTrusted = true,
                                           .inputMonitoring = InputMonitoringAccess::denied,
                                           .hasEventTap = true,
                                           .isSessionActive = false,
                                           .seesKeyboards = true,
                                           .isKeyboardSeized = true,
                                           .keyboards = {}}};
  // More than ten stay in their order.
  for (int number = 0; number < 12; ++number) {
    status.running->keyboards.push_back({.name = std::to_string(number),
                                         .numbers = "046d:c33f",
                                         .isTranslatable = number % 2 == 0});
  }
  EXPECT_EQ(statusFrom(propertyDictionary(status)), status);
  EXPECT_EQ(statusFrom(propertyDictionary(Status{})), Status{});
  EXPECT_EQ(statusFrom(PropertyDictionary{}), Status{});
}

}  // namespace
}  // namespace keyrow
