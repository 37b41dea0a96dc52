#include "sim/scenario/TimelinePrinter.h"

#include <array>
#include <cstdio>

namespace keyrow::sim {

namespace {

/// SGR sequences (ECMA-48).
constexpr std::string_view bold = "\033[1m";
constexpr std::string_view faint = "\033[2m";
constexpr std::string_view red = "\033[31m";
constexpr std::string_view green = "\033[32m";
constexpr std::string_view yellow = "\033[33m";
constexpr std::string_view blue = "\033[34m";
constexpr std::string_view plain = "\033[0m";

/// In the order of `TimelineEvent::Kind`.
constexpr std::array<std::string_view, TimelineEvent::kindCount> kindStyles{
    yellow, yellow, blue, blue, green, faint, blue, blue, green, faint, faint, red, plain};

/// The machine is switched on at this time of day, on this day.
constexpr std::chrono::hours switchedOnAt{8};
constexpr std::chrono::sys_days switchedOnDay{std::chrono::year{2024} / 3 / 1};

}  // namespace

std::string timeOfDay(std::chrono::nanoseconds sinceSwitchedOn) {
  using namespace std::chrono;
  const hh_mm_ss time{floor<milliseconds>((sinceSwitchedOn + switchedOnAt) % 24h)};
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d",
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()),
                static_cast<int>(time.subseconds().count()));
  return text.data();
}

std::string dateText(std::chrono::nanoseconds sinceSwitchedOn) {
  using namespace std::chrono;
  const year_month_day date{switchedOnDay + floor<days>(sinceSwitchedOn + switchedOnAt)};
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text.data();
}

void TimelinePrinter::willPlay(const Scenario& scenario) {
  lastTime_.clear();
  lastDate_ = dateText({});
  followsComment_ = false;
  if (detail_ == Detail::failuresOnly) return;
  out_ << '\n' << painted(bold, scenario.name) << "\n";
}

void TimelinePrinter::willPlay(const Step& step, const SimulatedMac& mac) {
  if (detail_ == Detail::failuresOnly || step.isExpectation()) return;
  if (step.isComment()) {
    if (!followsComment_) out_ << '\n';
    if (!step.text.empty()) out_ << "  " << step.text;
    out_ << '\n';
    followsComment_ = true;
    return;
  }
  if (followsComment_) out_ << '\n';
  followsComment_ = false;
  out_ << timeColumn(mac.scheduler.now()) << "  " << painted(bold, step.text) << '\n';
}

void TimelinePrinter::didHappen(const TimelineEvent& event) {
  if (detail_ == Detail::failuresOnly) return;
  const auto word = wordOf(event.kind);
  const auto style = kindStyles.at(static_cast<std::size_t>(event.kind));
  out_ << timeColumn(event.time) << "    " << painted(style, word)
       << textOf(event).substr(word.size()) << '\n';
}

void TimelinePrinter::didPlay(const Scenario& scenario, const Step& step, const Outcome& outcome) {
  if (outcome.kind != Outcome::Kind::done) {
    const auto place =
        scenario.name + ":" + std::to_string(step.line) + ":" + std::to_string(step.column) + ": ";
    out_ << painted(red, place + outcome.message) << '\n';
    return;
  }
  if (detail_ == Detail::failuresOnly || !step.isExpectation()) return;
  if (followsComment_) out_ << '\n';
  followsComment_ = false;
  out_ << std::string(14, ' ') << painted(green, "  ✓ " + step.text.substr(7)) << '\n';
}

void TimelinePrinter::showTime(const SimulatedMac& mac) {
  lastTime_.clear();
  out_ << timeColumn(mac.scheduler.now()) << '\n';
}

std::string TimelinePrinter::dateAndTime(std::chrono::nanoseconds sinceSwitchedOn) {
  return dateText(sinceSwitchedOn) + " " + timeOfDay(sinceSwitchedOn);
}

std::string TimelinePrinter::painted(std::string_view style, std::string_view text) const {
  if (!inColour_) return std::string{text};
  return std::string{style} + std::string{text} + std::string{plain};
}

std::string TimelinePrinter::timeColumn(std::chrono::nanoseconds time) {
  const auto text = timeOfDay(time);
  if (const auto date = dateText(time); date != lastDate_) {
    lastDate_ = date;
    lastTime_.clear();
    out_ << "  " << painted(faint, date) << '\n';
  }
  if (text == lastTime_) return std::string(2 + text.size(), ' ');
  lastTime_ = text;
  return "  " + painted(faint, text);
}

}  // namespace keyrow::sim
