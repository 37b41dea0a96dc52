#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "tests/StageChecks.h"

namespace keyrow::sim {
namespace {

const std::vector<std::string> apps{"com.apple.finder", "com.apple.SystemSettings",
                                    "com.example.one", "com.example.two"};

/// Plays a line, and checks that an override was stored only if the hardware took it.
void playAndCheckStorage(const std::string& text, Stage& stage) {
  std::map<std::string, std::optional<FnState>> before;
  for (const auto& app : apps) before[app] = stage.storedFnStates().local(app);
  const auto writesBefore = stage.mac.hid.writtenValues().size();

  const auto step = parseLine(text, 1);
  RC_ASSERT(step.has_value());
  playStep(**step, stage);

  for (const auto& app : apps) {
    const auto now = stage.storedFnStates().local(app);
    if (!now || now == before[app]) continue;
    const auto written = stage.mac.hid.writtenValues();
    RC_ASSERT(std::find(written.begin() + static_cast<std::ptrdiff_t>(writesBefore), written.end(),
                        PropertyValue{rawValue(*now)}) != written.end());
  }
  RC_ASSERT(leaks(stage) == "");
}

rc::Gen<std::string> app() { return rc::gen::elementOf(apps); }
rc::Gen<std::string> mode() { return rc::gen::element<std::string>("special", "standard"); }

rc::Gen<std::string> joined(std::string before, rc::Gen<std::string> generator) {
  return rc::gen::map(std::move(generator), [before = std::move(before)](const std::string& text) {
    return before + text;
  });
}

rc::Gen<std::string> portCall() {
  return rc::gen::map(rc::gen::elementOf(std::vector(portCalls.begin(), portCalls.end())),
                      [](const PortCallInfo& call) { return std::string{call.name}; });
}

/// One line of a session: something that the user does, or that goes wrong.
rc::Gen<std::string> line() {
  return rc::gen::weightedOneOf<std::string>(
      {{6, joined("front ", rc::gen::oneOf(app(), rc::gen::just(std::string{"none"})))},
       {4, rc::gen::element<std::string>("toggle override", "toggle global", "clear override")},
       {1, joined("set global ", mode())},
       {1, rc::gen::map(rc::gen::pair(mode(), app()),
                        [](const auto& pair) {
                          return "set override " + pair.first + " for " + pair.second;
                        })},
       {1, joined("system-settings ", mode())},
       {1, joined("hardware ", mode())},
       {1, rc::gen::element<std::string>("hardware HIDFKeyMode=2", "hardware HIDParameters=none")},
       {1, joined("uninstall ", app())},
       {1, joined("install ", app())},
       {2, joined("fail ", portCall())},
       {1, rc::gen::map(portCall(), [](const auto& call) { return "fail " + call + " always"; })},
       {2, rc::gen::just(std::string{"repair"})},
       {2, rc::gen::element<std::string>("wait 1ms", "wait 0.35s", "wait 2s")},
       {2, rc::gen::element<std::string>("launch keyrow", "quit keyrow", "kill keyrow")},
       {1, rc::gen::element<std::string>("hang keyrow", "hang keyrow unreachable",
                                         "hang keyrow unstoppable", "resume keyrow")},
       {2, rc::gen::element<std::string>("click", "click right", "close menu",
                                         "choose \"Use F1-F12 by Default\"",
                                         "choose \"Use F1-F12 in This App Only\"",
                                         "choose \"Settings…\"", "choose \"Quit\"")},
       {1, rc::gen::element<std::string>("reopen keyrow", "close window", "tab About")},
       {1, rc::gen::element<std::string>("sleep", "wake", "caps-lock on", "caps-lock off",
                                         "setting caps-lock-indicator on", "revoke accessibility",
                                         "grant accessibility", "post takeover targetPID=501")}});
}

TEST(RandomSessionTest, NoSessionStoresWhatWasNotWrittenOrLeavesTheWrongMode) {
  const bool holds = rc::check("random session", [] {
    const auto lines = *rc::gen::container<std::vector<std::string>>(line());
    Stage stage;
    for (const auto* setup :
         {"install com.example.one", "install com.example.two", "launch keyrow"}) {
      playAndCheckStorage(setup, stage);
    }
    for (const auto& text : lines) playAndCheckStorage(text, stage);
    RC_ASSERT(problemAfterQuit(stage) == "");
  });
  EXPECT_TRUE(holds);
}

TEST(RandomSessionTest, AnUndisturbedSwitchAppliesTheOverrideOrTheGlobalMode) {
  const bool holds = rc::check("switch after a random session", [] {
    const auto lines = *rc::gen::container<std::vector<std::string>>(line());
    const auto next = *app();
    Stage stage;
    for (const auto& text : lines) playAndCheckStorage(text, stage);
    for (const auto& text : {std::string{"repair"}, std::string{"launch keyrow"}, "install " + next,
                             "front " + next}) {
      playAndCheckStorage(text, stage);
    }
    const auto local = stage.storedFnStates().local(next);
    const auto expected = local ? local : stage.storedFnStates().global();
    if (!expected) {
      // Nothing can tell a mode, so Keyrow must not make one up.
      RC_ASSERT(stage.mac.hid.modeName() == "unreadable");
      return;
    }
    RC_ASSERT(stage.mac.hid.parameter("HIDFKeyMode") == PropertyValue{rawValue(*expected)});
    RC_ASSERT(stage.process()->keyrow().modePolicy().isLocalScopeActive() == local.has_value());
  });
  EXPECT_TRUE(holds);
}

}  // namespace
}  // namespace keyrow::sim
