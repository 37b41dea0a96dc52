#include <algorithm>
#include <array>

#include "app/DiagnosticsLog.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Language.h"

namespace keyrow::sim {

namespace {

Expectation expectLog(LineReader& line) {
  constexpr std::array<std::string_view, 4> categories{"app", "input", "state", "hardware"};
  constexpr std::array<std::string_view, 5> levels{"debug", "info", "notice", "error", "fault"};
  return EventPattern{TimelineEvent::Kind::log,
                      {line.maybeOneOf(categories), line.maybeOneOf(levels), line.maybeQuoted()}};
}

Expectation expectReport(LineReader& line) {
  return [expected = line.quotedText("a text in quotation marks")](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("the log report to hold " + quoted(expected));
    const auto report = stage.process()->keyrow().diagnosticsLog().recentLogReport();
    if (report.find(expected) != std::string::npos) return Outcome{};
    return unmet("expected the log report to hold " + quoted(expected) + ", but it is\n" + report);
  };
}

constexpr std::array<ExpectationWord, 2> expectations{{
    {"log", "expect log [CATEGORY] [LEVEL] [\"TEXT\"]",
     "A line that was logged, to the letter. The categories are app, input, state and hardware, "
     "the levels debug, info, notice, error and fault.",
     "expect log state notice \"Set the global function key mode to standard function keys.\"",
     expectLog},
    {"report", "expect report \"TEXT\"", "A text in the log report that goes with a bug report.",
     "expect report \"No recent Keyrow logs were available.\"", expectReport},
}};

}  // namespace

LanguagePart logLines() { return {{}, expectations}; }

}  // namespace keyrow::sim
