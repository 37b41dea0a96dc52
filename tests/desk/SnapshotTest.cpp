#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "desk/Session.h"
#include "desk/Snapshot.h"
#include "desk/TopRow.h"
#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::desk {
namespace {

using nlohmann::json;
using ::testing::Each;
using ::testing::ElementsAre;

/// A stage on which some lines were played.
class PlayedStage {
 public:
  explicit PlayedStage(std::string_view lines) { play(lines); }

  void play(std::string_view lines) {
    const auto scenario = sim::parseScenario("desk.txt", lines);
    ASSERT_TRUE(scenario) << lines;
    for (const auto& step : scenario->steps) {
      const auto outcome = sim::playStep(step, stage);
      ASSERT_EQ(outcome.message, "") << step.text;
    }
  }

  std::vector<std::string> topRowOf(std::string_view keyboard) {
    std::vector<std::string> row;
    for (const auto& key : topRow(stage, keyboard)) row.push_back(key.does);
    return row;
  }

  sim::Stage stage;
};

const std::vector<std::string> functionKeys{"F1", "F2", "F3", "F4",  "F5",  "F6",
                                            "F7", "F8", "F9", "F10", "F11", "F12"};
const std::vector<std::string> appleKeys{"brightness down",
                                         "brightness up",
                                         "Mission Control",
                                         "Spotlight",
                                         "Dictation",
                                         "Do Not Disturb",
                                         "previous",
                                         "play",
                                         "next",
                                         "mute",
                                         "volume down",
                                         "volume up"};
/// What Keyrow makes of a top row of another make differs in three keys.
const std::vector<std::string> translatedKeys = [] {
  auto keys = appleKeys;
  keys[3] = "Spotlight Shortcut";
  keys[4] = "F5";
  keys[5] = "F6";
  return keys;
}();

constexpr std::string_view translating =
    "keyboard usb vendor=0x046d product=\"G Pro\" transport=USB built-in=false\n"
    "front com.apple.finder\n"
    "defaults write applyFnModeToExternalFunctionKeys true\n"
    "launch keyrow\n"
    "wait 2s\n";

TEST(TopRowTest, AnAppleKeyboardFollowsTheModeByItself) {
  PlayedStage played{"keyboard internal transport=SPI built-in=true"};
  EXPECT_EQ(played.topRowOf("internal"), appleKeys);
  played.play("system-settings standard");
  EXPECT_EQ(played.topRowOf("internal"), functionKeys);
}

TEST(TopRowTest, FnTurnsAnAppleTopRowRound) {
  PlayedStage played{"keyboard internal transport=SPI built-in=true\nhold fn on internal"};
  EXPECT_EQ(played.topRowOf("internal"), functionKeys);
}

TEST(TopRowTest, AnotherMakeFollowsWhereKeyrowTranslates) {
  PlayedStage played{translating};
  EXPECT_EQ(played.topRowOf("usb"), translatedKeys);
  played.play("system-settings standard");
  EXPECT_EQ(played.topRowOf("usb"), functionKeys);
}

TEST(TopRowTest, AKeyboardWithAModeOfItsOwnShowsItsOwnRow) {
  PlayedStage played{translating};
  played.play(
      "keyboard own vendor=0x1234 product-id=1 transport=USB built-in=false\n"
      "defaults write keyboardFnStates 1234:0001=1");
  EXPECT_EQ(played.topRowOf("own"), functionKeys);
  EXPECT_EQ(played.topRowOf("usb"), translatedKeys);
  played.play("system-settings standard\ndefaults write keyboardFnStates 1234:0001=0");
  EXPECT_EQ(played.topRowOf("own"), translatedKeys);
  EXPECT_EQ(played.topRowOf("usb"), functionKeys);
  played.play("wait 1s\npress F8 on own\nexpect key \"play down\"");
}

struct Unseen {
  const char* name;
  std::string_view line;
};

class UnseenTest : public testing::TestWithParam<Unseen> {};

TEST_P(UnseenTest, ItIsAsWithoutKeyrow) {
  PlayedStage played{translating};
  played.play(GetParam().line);
  EXPECT_EQ(played.topRowOf("usb"), functionKeys);
  // And that is what pressing does.
  played.play("press F8 on usb\nexpect no key \"play down\"");
}

INSTANTIATE_TEST_SUITE_P(
    EveryWay, UnseenTest,
    testing::Values(Unseen{"Quit", "quit keyrow"}, Unseen{"Killed", "kill keyrow"},
                    Unseen{"Hanging", "hang keyrow\nwait 1s"},
                    Unseen{"Untrusted", "revoke accessibility\nwait 10s"},
                    Unseen{"SecureInput", "secure-input on"},
                    Unseen{"NoTap", "disable tap silently"},
                    Unseen{"NoMonitoring", "revoke input-monitoring\nwait 1s"},
                    Unseen{"UnreadableMode", "hardware HIDFKeyMode=7"},
                    Unseen{"FailingRead", "fail read-service-property always"},
                    Unseen{"SettingOff", "defaults write applyFnModeToExternalFunctionKeys false"}),
    [](const auto& unseen) { return std::string{unseen.param.name}; });

/// What pressing the key does, in the words of the top row; empty where it is something else.
std::string pressed(PlayedStage& played, const std::string& key, const std::string& keyboard) {
  played.play("wait 1s\npress " + key + " on " + keyboard);
  for (const auto& event : played.stage.recentTimeline()) {
    if (event.kind != sim::TimelineEvent::Kind::key) continue;
    const auto& text = event.terms.front();
    for (const auto& does :
         {std::string{"brightness down"}, std::string{"brightness up"}, std::string{"previous"},
          std::string{"play"}, std::string{"next"}, std::string{"mute"}, std::string{"volume down"},
          std::string{"volume up"}, key}) {
      if (text.starts_with("\"" + does + " down")) return does;
    }
  }
  return "";
}

TEST(TopRowTest, TellsWhatPressingWillDo) {
  PlayedStage played{translating};
  played.play("keyboard internal transport=SPI built-in=true");
  for (const std::string_view change :
       {"", "system-settings standard", "secure-input on", "system-settings special",
        "secure-input off", "revoke input-monitoring", "grant input-monitoring"}) {
    if (!change.empty()) played.play(change);
    for (const std::string keyboard : {"usb", "internal"}) {
      for (const std::string key : {"F1", "F7", "F8", "F12"}) {
        const auto row = topRow(played.stage, keyboard);
        const auto told = std::ranges::find(row, key, &TopRowKey::name)->does;
        EXPECT_EQ(pressed(played, key, keyboard), told) << change << ": " << key << " " << keyboard;
      }
    }
  }
}

TEST(SnapshotTest, HoldsWhatTheMenuHolds) {
  PlayedStage played{translating};
  played.play("click right");
  const auto item = snapshot(played.stage)["keyrow"]["item"];
  EXPECT_EQ(item["image"], "globe");
  std::vector<std::string> titles;
  for (const auto& one : item["menu"]) {
    if (one["kind"] == "item") titles.push_back(one["title"]);
  }
  EXPECT_THAT(titles,
              ElementsAre(statusMenuTitle::globalToStandard, statusMenuTitle::localToStandard,
                          statusMenuTitle::settings, statusMenuTitle::quit));
}

TEST(SnapshotTest, HoldsEveryControlOfThePane) {
  PlayedStage played{translating};
  played.play("reopen keyrow\nclick \"Show Caps Lock indicator\"");
  const auto window = snapshot(played.stage)["keyrow"]["window"];
  EXPECT_EQ(window["tab"], "General");
  json box;
  for (const auto& row : window["pane"]["rows"]) {
    if (row.value("name", "") == "caps-lock-indicator") box = row;
  }
  EXPECT_EQ(box["isOn"], true);
}

/// What a scenario does, told as one list.
std::vector<std::string> story(const sim::Scenario& scenario, bool isLookedAt) {
  std::vector<std::string> told;
  sim::Stage stage;
  stage.mac.timeline.setListener([&told](const sim::TimelineEvent& event) {
    told.push_back(std::to_string(event.time.count()) + " " + sim::textOf(event));
  });
  for (const auto& step : scenario.steps) {
    const auto outcome = sim::playStep(step, stage);
    told.push_back(step.text + " " + outcome.message);
    if (isLookedAt) snapshot(stage);
  }
  told.push_back("calls " + std::to_string(stage.mac.faults.overallCallCount()));
  return told;
}

TEST(SnapshotTest, LookingChangesNothing) {
  const auto files = sim::scenarioFiles(KEYROW_SOURCE_DIR "/scenarios");
  ASSERT_TRUE(files);
  for (const auto& file : *files) {
    const auto scenario = sim::readScenario(file);
    ASSERT_TRUE(scenario) << file;
    EXPECT_EQ(story(*scenario, true), story(*scenario, false)) << file;
  }
}

}  // namespace
}  // namespace keyrow::desk
