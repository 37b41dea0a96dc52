#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "desk/Opening.h"
#include "desk/Session.h"
#include "desk/Stages.h"

namespace keyrow::desk {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using Lines = std::vector<std::string>;

Lines opening() { return {openingLines.begin(), openingLines.end()}; }

/// A page as it follows a session.
class Follower {
 public:
  json play(const PlayRequest& request) {
    auto answer = session.play(request);
    const auto from = answer["from"].get<std::size_t>();
    lines.resize(from);
    shown.resize(from + 1);
    events.resize(from);
    for (const auto& frame : answer["frames"]) {
      lines.push_back(frame["line"]);
      events.push_back(frame["events"]);
      shown.push_back(shown.back().patch(frame["change"]));
    }
    return answer;
  }

  Session session;
  Lines lines;
  std::vector<json> events;
  /// What is shown in the beginning and after each line.
  std::vector<json> shown{Session::blank()};
};

TEST(DeskSessionTest, TheOpeningPlays) {
  Follower page;
  const auto answer = page.play({.kept = 0, .lines = opening()});
  EXPECT_TRUE(answer["refused"].is_null());
  EXPECT_EQ(page.lines, opening());
  EXPECT_EQ(page.shown.back()["keyrow"]["item"]["image"], "globe");
  EXPECT_EQ(page.shown.back()["keyboards"].size(), 2);
}

TEST(DeskSessionTest, ALineThatDoesNotParseChangesNothing) {
  Follower page;
  page.play({.kept = 0, .lines = opening()});
  const auto before = page.shown.back();
  const auto answer = page.play({.kept = 2, .lines = {"click", "clock \"Quit\""}});
  EXPECT_EQ(answer["refused"]["line"], "clock \"Quit\"");
  EXPECT_NE(answer["refused"]["message"], "");
  EXPECT_EQ(page.lines, opening());
  EXPECT_EQ(page.play({.kept = 9, .lines = {"# a word"}})["frames"][0]["change"], json::array());
  EXPECT_EQ(page.shown.back(), before);
}

TEST(DeskSessionTest, ALineThatCannotBeCarriedOutLeavesNothingBehind) {
  Follower page;
  page.play({.kept = 0, .lines = opening()});
  const auto before = page.shown.back();
  const auto answer = page.play({.kept = 9, .lines = {"choose \"Quit\"", "wait 1s"}});
  EXPECT_EQ(answer["refused"]["message"], "no menu is open");
  EXPECT_EQ(answer["frames"], json::array());
  page.play({.kept = 9, .lines = {"# a word"}});
  EXPECT_EQ(page.shown.back(), before);
}

TEST(DeskSessionTest, WaitsThatFollowEachOtherAreJoined) {
  Follower page;
  page.play({.kept = 0, .lines = {"launch keyrow", "wait 0.3s"}});
  page.play({.kept = 2, .lines = {"wait 1min"}, .joinsWaits = true});
  const auto answer =
      page.play({.kept = 2, .lines = {"wait 0.5s", "wait 0.2s"}, .joinsWaits = true});
  EXPECT_EQ(answer["from"], 1);
  EXPECT_THAT(page.lines, ElementsAre("launch keyrow", "wait 61s"));
  EXPECT_EQ(page.shown.back()["clock"], "08:01:01.000");
}

TEST(DeskSessionTest, WhatWasJoinedPlaysTheSameAgain) {
  Follower page;
  page.play({.kept = 0, .lines = opening()});
  page.play({.kept = 9, .lines = {"hold F1 on usb", "wait 0.3s"}, .joinsWaits = true});
  for (int i = 0; i < 10; ++i) {
    page.play({.kept = 11, .lines = {"wait 0.1s"}, .joinsWaits = true});
  }
  page.play({.kept = 11, .lines = {"release F1 on usb", "wait 0.3s"}, .joinsWaits = true});
  EXPECT_EQ(page.lines.at(10), "wait 1.3s");

  Follower again;
  again.play({.kept = 0, .lines = page.lines});
  EXPECT_EQ(again.lines, page.lines);
  EXPECT_EQ(again.events, page.events);
  EXPECT_EQ(again.shown, page.shown);
}

TEST(DeskSessionTest, AJoinedWaitShowsWhatItsFirstPartHasChanged) {
  Follower page;
  page.play({.kept = 0, .lines = opening()});
  page.play({.kept = 9, .lines = {"revoke accessibility", "wait 1s"}, .joinsWaits = true});
  page.play({.kept = 11, .lines = {"wait 1s"}, .joinsWaits = true});
  EXPECT_EQ(page.lines.back(), "wait 2s");
  EXPECT_EQ(page.shown.at(10)["system"]["tap"], "working");
  EXPECT_EQ(page.shown.back()["system"]["tap"], "missing");
}

TEST(DeskSessionTest, AnExpectationBehindAJoinedWaitSeesAllOfIt) {
  Follower page;
  page.play({.kept = 0, .lines = {"keyboard usb", "front com.apple.finder", "hold A on usb"}});
  page.play({.kept = 3, .lines = {"wait 0.6s"}, .joinsWaits = true});
  page.play({.kept = 4, .lines = {"wait 1h"}, .joinsWaits = true});
  const auto expected = page.events.at(3).front()["text"].get<std::string>();
  const auto answer = page.play({.kept = 4, .lines = {"expect " + expected}});
  EXPECT_TRUE(answer["frames"][0]["failure"].is_null()) << answer;
}

TEST(DeskSessionTest, TakingBackIsAsIfItHadNeverBeen) {
  Follower page;
  page.play({.kept = 0, .lines = opening()});
  const auto before = page.shown.back();
  page.play({.kept = 9, .lines = {"click", "wait 0.3s"}});
  EXPECT_NE(page.shown.back(), before);
  page.play({.kept = 9, .lines = {}});
  EXPECT_EQ(page.shown.back(), before);
  page.play({.kept = 9, .lines = {"click", "wait 0.3s"}});
  EXPECT_EQ(page.shown.back()["system"]["mode"], "standard");
}

TEST(DeskSessionTest, AnUnmetExpectationSaysWhatWasThere) {
  Follower page;
  const auto answer =
      page.play({.kept = 0, .lines = {"expect hardware standard", "launch keyrow"}});
  EXPECT_EQ(answer["frames"][0]["failure"],
            "expected the hardware to be standard, but it is special");
  EXPECT_EQ(page.lines.size(), 2);
}

TEST(DeskSessionTest, AnEndlessLineIsTakenBack) {
  Follower page;
  page.play({.kept = 0, .lines = {"keyboard usb", "hold A on usb", "wait 1s"}});
  const auto answer = page.play({.kept = 3, .lines = {"wait 1000h"}});
  EXPECT_EQ(answer["refused"]["message"], "this line would cause more than a million events");
  page.play({.kept = 3, .lines = {"release A on usb"}});
  EXPECT_EQ(page.lines.size(), 4);
}

TEST(DeskStagesTest, AtTheLimitTheOneLongestUnusedGoes) {
  Stages stages{2};
  const auto first = stages.open();
  const auto second = stages.open();
  EXPECT_TRUE(stages.play(first, {.kept = 0, .lines = {"wait 1s"}}));
  const auto third = stages.open();
  EXPECT_EQ(stages.count(), 2);
  EXPECT_FALSE(stages.play(second, {}));
  EXPECT_TRUE(stages.play(first, {}));
  EXPECT_TRUE(stages.play(third, {}));
}

TEST(DeskStagesTest, AClosedOneIsGone) {
  Stages stages{2};
  const auto name = stages.open();
  stages.close(name);
  stages.close(name);
  EXPECT_EQ(stages.count(), 0);
  EXPECT_FALSE(stages.play(name, {}));
}

TEST(DeskStagesTest, TwoDoNotDisturbEachOther) {
  Stages stages{4};
  const auto one = stages.open();
  const auto other = stages.open();
  stages.play(one, {.kept = 0, .lines = {"system-settings standard"}});
  const auto answer = stages.play(other, {.kept = 0, .lines = {"expect hardware special"}});
  EXPECT_TRUE((*answer)["frames"][0]["failure"].is_null());
}

}  // namespace
}  // namespace keyrow::desk
