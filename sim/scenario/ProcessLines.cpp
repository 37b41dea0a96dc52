#include "sim/scenario/ProcessLines.h"

#include <array>

#include "sim/scenario/Language.h"

namespace keyrow::sim {

bool PostTakeover::isMeantFor(OpenHandles::ProcessID process) const {
  const auto target = userInfo.find("targetPID");
  return target != userInfo.end() && target->second == PropertyValue{std::int64_t{process}};
}

Outcome Launch::play(Stage& stage) const {
  stage.launchKeyrow();
  return {};
}

Outcome Reopen::play(Stage& stage) const {
  return stage.tell(process, [](SimulatedProcess& keyrow) {
    keyrow.reopen();
    return Outcome{};
  });
}

Outcome Quit::play(Stage& stage) const {
  return stage.tell(process, [](SimulatedProcess& keyrow) {
    keyrow.quit();
    return Outcome{};
  });
}

Outcome LogOut::play(Stage& stage) const {
  stage.askAllToQuit();
  if (stage.process()) {
    stage.mac.screen.note("Keyrow has interrupted the log-out");
    return {};
  }
  stage.mac.screen.note("the user has logged out");
  stage.mac.applications.activate(std::nullopt);
  return {};
}

Outcome Kill::play(Stage& stage) const {
  return stage.tell(process, [](SimulatedProcess& keyrow) {
    keyrow.kill();
    return Outcome{};
  });
}

Outcome HangUp::play(Stage& stage) const {
  return stage.tell(process, [this](SimulatedProcess& keyrow) {
    keyrow.hang(behaviour);
    return Outcome{};
  });
}

Outcome Resume::play(Stage& stage) const {
  return stage.tell(process, [](SimulatedProcess& keyrow) {
    if (!keyrow.isHanging()) {
      return unplayable("Keyrow " + std::to_string(keyrow.processID()) + " does not hang");
    }
    keyrow.resume();
    return Outcome{};
  });
}

Outcome PostTakeover::play(Stage& stage) const {
  stage.mac.distributedNotifications.post(
      {std::string{appIdentifier} + ".instanceTakeover", std::string{appIdentifier},
       userInfo.empty() ? std::nullopt : std::optional{userInfo}, stage.mac.sessions.active()});
  return {};
}

namespace {

constexpr std::uint64_t largestProcessID = 99'999;

OpenHandles::ProcessID processID(LineReader& line) {
  return static_cast<OpenHandles::ProcessID>(line.number(largestProcessID));
}

/// Takes "keyrow", and the process identifier where there is one.
MeantProcess meantProcess(LineReader& line) {
  line.require("keyrow");
  return line.atNumber() ? MeantProcess{processID(line)} : std::nullopt;
}

Action parseLaunch(LineReader& line) {
  line.require("keyrow");
  return Launch{};
}

Action parseReopen(LineReader& line) { return Reopen{meantProcess(line)}; }

Action parseQuit(LineReader& line) { return Quit{meantProcess(line)}; }

Action parseLogOut(LineReader&) { return LogOut{}; }

Action parseKill(LineReader& line) { return Kill{meantProcess(line)}; }

Action parseResume(LineReader& line) { return Resume{meantProcess(line)}; }

Action parseHang(LineReader& line) {
  HangUp hang{.process = meantProcess(line)};
  if (line.atEnd()) return hang;
  constexpr std::array<std::string_view, 2> words{"unreachable", "unstoppable"};
  hang.behaviour = line.oneOf(words) == 0 ? Hang::unreachable : Hang::unstoppable;
  return hang;
}

Action parsePostTakeover(LineReader& line) {
  const auto userInfo = line.atEnd() ? PropertyValue{PropertyDictionary{}} : line.value();
  if (!userInfo.dictionary()) line.failBefore("KEY=VALUE ...");
  return PostTakeover{*userInfo.dictionary()};
}

Expectation expectProcess(LineReader& line) {
  std::string expected;
  if (line.accept("none")) {
    expected = "none";
  } else {
    expected = std::to_string(processID(line));
    constexpr std::array<std::string_view, 3> events{"launched", "quit", "killed"};
    if (auto event = line.maybeOneOf(events)) {
      return EventPattern{TimelineEvent::Kind::process, {expected, event}};
    }
    while (line.atNumber()) expected += " " + std::to_string(processID(line));
  }
  return [expected](Stage& stage) {
    return expectEqual("the processes of Keyrow", expected, stage.runningProcesses());
  };
}

Expectation expectLeaks(LineReader& line) {
  line.require("none");
  return [](Stage& stage) {
    const auto leaks = stage.leaks();
    return leaks.empty() ? Outcome{} : unmet("expected no leaks, but still open: " + leaks);
  };
}

constexpr std::array<ActionWord, 8> actions{{
    {"launch", "launch keyrow",
     "The user starts Keyrow. The first has the process identifier 501, the next 502, and so on. "
     "Where one runs already, another instance starts; all other lines mean the one that was "
     "started last, save those below that name another one's process identifier.",
     "launch keyrow", parseLaunch},
    {"reopen", "reopen keyrow [PID]",
     "The user opens the running Keyrow, in Finder or in the Dock.", "reopen keyrow", parseReopen},
    {"quit", "quit keyrow [PID]", "The user quits Keyrow.", "quit keyrow 501", parseQuit},
    {"log out", "log out",
     "The user logs out: macOS asks all that runs in the session to quit, and gives up where one "
     "does not.",
     "log out", parseLogOut},
    {"kill", "kill keyrow [PID]", "Keyrow ends at once and without a word, as after kill -9.",
     "kill keyrow", parseKill},
    {"hang", "hang keyrow [PID] [unreachable|unstoppable]",
     "Keyrow stops answering. When it is unreachable it cannot even be asked to quit, and when it "
     "is unstoppable it cannot be forced to.",
     "hang keyrow unreachable", parseHang},
    {"resume", "resume keyrow [PID]", "Keyrow answers again, and catches up with what it missed.",
     "resume keyrow", parseResume},
    {"post takeover", "post takeover [KEY=VALUE ...]",
     "Some process posts the notification by which a new instance of Keyrow tells an older one to "
     "go, with this user info.",
     "post takeover targetPID=501", parsePostTakeover},
}};

constexpr std::array<ExpectationWord, 2> expectations{{
    {"process", "expect process PID ...|none | expect process PID launched|quit|killed",
     "Which instances of Keyrow run, in the order of their launch; or that one started or ended.",
     "expect process 501 quit", expectProcess},
    {"leaks", "expect leaks none", "Nothing is held open that should be closed or released.",
     "expect leaks none", expectLeaks},
}};

}  // namespace

LanguagePart processLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
