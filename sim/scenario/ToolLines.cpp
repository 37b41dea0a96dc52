#include "sim/scenario/ToolLines.h"

#include <array>
#include <chrono>

#include "sim/scenario/Language.h"

namespace keyrow::sim {

Outcome RunTool::play(Stage& stage) const {
  if (!stage.mac.sessions.isLoggedIn(user.value_or(stage.mac.sessions.active()))) {
    return unplayable(*user + " is not logged in");
  }
  auto& tool = stage.startTool(isRoot, user);
  tool.run(arguments);
  if (isInBackground) return {};
  // Whoever watches does so until they are interrupted.
  using namespace std::chrono_literals;
  constexpr auto longest = 3s;
  constexpr auto step = 1ms;
  const bool isWatch = !arguments.empty() && arguments.front() == "watch";
  for (auto passed = 0ms; passed < (isWatch ? 200ms : longest) && !tool.exitStatus();
       passed += step) {
    stage.mac.scheduler.advance(step);
  }
  if (!tool.exitStatus() && !isWatch) return unmet("keyrow does not come to an end");
  return {};
}

Outcome InterruptTool::play(Stage& stage) const {
  return stage.interruptTools() ? Outcome{} : unplayable("no keyrow runs in a terminal");
}

namespace {

Action parseRun(LineReader& line) {
  RunTool run;
  run.isRoot = line.accept("sudo");
  if (!run.isRoot && line.accept("as")) run.user = line.word("the name of a user");
  line.require("keyrow");
  while (!line.atEnd()) run.arguments.push_back(line.wordOrNothing("an argument"));
  if (!run.arguments.empty() && run.arguments.back() == "&") {
    run.isInBackground = true;
    run.arguments.pop_back();
  }
  return run;
}

Action parseInterrupt(LineReader& line) {
  line.require("keyrow");
  return InterruptTool{};
}

Expectation expectOutput(LineReader& line) {
  if (line.accept("error")) {
    return EventPattern{TimelineEvent::Kind::output, {"error", line.maybeQuoted()}};
  }
  return EventPattern{TimelineEvent::Kind::output, {line.maybeQuoted()}};
}

Expectation expectExitStatus(LineReader& line) {
  constexpr std::uint64_t largest = 255;
  const auto expected = std::to_string(line.number(largest));
  return [expected](Stage& stage) {
    const auto status = stage.toolExitStatus();
    return expectEqual("the exit status", expected, status ? std::to_string(*status) : "none yet");
  };
}

constexpr std::array<ActionWord, 2> actions{{
    {"run", "run [sudo|as NAME] keyrow ARGUMENT ... [&]",
     "The user types the command keyrow in a terminal, and waits until it has ended; a watch goes "
     "on until it is interrupted, and so does one with & behind it. With a name it is somebody "
     "else who is logged in, from afar.",
     "run keyrow mode standard", parseRun},
    {"interrupt", "interrupt keyrow",
     "The user presses Ctrl-C: whatever the command keyrow still does, ends.", "interrupt keyrow",
     parseInterrupt},
}};

constexpr std::array<ExpectationWord, 2> expectations{{
    {"output", "expect output [error] [\"TEXT\"]",
     "A line that the command keyrow has printed, or has printed as an error.",
     "expect output \"The global mode is standard.\"", expectOutput},
    {"exit-status", "expect exit-status NUMBER",
     "How the command keyrow that was run last has ended: 0 done, 1 could not, 2 wrong usage.",
     "expect exit-status 0", expectExitStatus},
}};

}  // namespace

LanguagePart toolLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
