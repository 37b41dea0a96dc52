#include "sim/scenario/FaultLines.h"

#include <algorithm>
#include <array>

#include "sim/scenario/Language.h"

namespace keyrow::sim {

Outcome Fail::play(Stage& stage) const {
  const auto left = stage.mac.faults.failuresLeft(call);
  if (left > 0) {
    return unplayable(std::string{info(call).name} + " is to fail already, " +
                      (left == Faults::always ? "always" : std::to_string(left) + " times") +
                      "; repair ends that");
  }
  stage.mac.faults.fail(call, times, after);
  return {};
}

Outcome Repair::play(Stage& stage) const {
  stage.mac.faults.repair();
  return {};
}

namespace {

constexpr std::uint64_t mostTimes = 1'000'000;

PortCall parsePortCall(LineReader& line) {
  std::array<std::string_view, portCalls.size()> names;
  std::ranges::transform(portCalls, names.begin(), &PortCallInfo::name);
  return static_cast<PortCall>(line.oneOf(names));
}

Action parseFail(LineReader& line) {
  Fail fail{.call = parsePortCall(line)};
  if (line.accept("always")) {
    fail.times = Faults::always;
  } else if (const auto times = line.maybeTimes(mostTimes)) {
    if (*times == 0) line.failBefore("at least 1 time");
    fail.times = *times;
  } else if (!line.atEnd() && !line.at("after")) {
    line.fail("always, N times or after N");
  }
  if (line.accept("after")) fail.after = line.number(mostTimes);
  return fail;
}

Action parseRepair(LineReader&) { return Repair{}; }

Expectation expectFault(LineReader& line) {
  return EventPattern{TimelineEvent::Kind::fault, {std::string{info(parsePortCall(line)).name}}};
}

Expectation expectCalls(LineReader& line) {
  const auto call = parsePortCall(line);
  return [call, expected = line.number(mostTimes)](Stage& stage) {
    return expectEqual("the number of calls of " + std::string{info(call).name},
                       std::to_string(expected), std::to_string(stage.recentCallCount(call)));
  };
}

constexpr std::array<ActionWord, 2> actions{{
    {"fail", "fail CALL [N times|always] [after N]",
     "A call of the system fails: the next one, the next N, or always; where it says after, as "
     "many calls work before.",
     "fail set-hid-parameter 2 times after 1", parseFail},
    {"repair", "repair", "No call of the system fails any more.", "repair", parseRepair},
}};

constexpr std::array<ExpectationWord, 2> expectations{{
    {"fault", "expect fault [CALL]", "A call of the system failed.",
     "expect fault set-hid-parameter", expectFault},
    {"calls", "expect calls CALL N",
     "How often a call of the system was made since the last line that is no expectation began: "
     "how often something was read or written.",
     "expect calls set-hid-parameter 1", expectCalls},
}};

}  // namespace

LanguagePart faultLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
