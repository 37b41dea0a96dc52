#include "sim/scenario/EventPattern.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace keyrow::sim {

bool EventPattern::matches(const TimelineEvent& event) const {
  if (event.kind != kind || event.terms.size() < terms.size()) return false;
  return std::ranges::equal(terms, event.terms | std::views::take(terms.size()),
                            [](const auto& expected, const std::string& actual) {
                              return !expected || *expected == actual;
                            });
}

std::string EventPattern::text() const {
  std::string text{wordOf(kind)};
  for (const auto& term : terms) {
    if (term) text += ' ' + *term;
  }
  return text;
}

EventPattern changePattern(TimelineEvent::Kind kind, std::vector<std::optional<std::string>> of,
                           std::string before, std::string after) {
  of.emplace_back(std::move(before));
  of.emplace_back("->");
  of.emplace_back(std::move(after));
  return {kind, std::move(of)};
}

Outcome EventExpectation::check(const std::vector<TimelineEvent>& events) const {
  std::string seen;
  for (const auto& event : events) {
    const bool isOfKind =
        std::ranges::find(inOrder, event.kind, &EventPattern::kind) != inOrder.end();
    if (isOfKind) seen += "\n    " + textOf(event);
  }
  const auto there = seen.empty() ? std::string{" nothing like it"} : ":" + seen;

  if (times) {
    const auto count = std::ranges::count_if(
        events, [this](const auto& event) { return inOrder.front().matches(event); });
    if (static_cast<std::size_t>(count) == *times) return {};
    return unmet("expected " +
                 (*times == 0 ? "no " + inOrder.front().text()
                              : inOrder.front().text() + " " + std::to_string(*times) + " times") +
                 ", but there was" + there);
  }

  auto next = events.begin();
  std::string wanted;
  bool isMet = true;
  for (const auto& pattern : inOrder) {
    if (!wanted.empty()) wanted += " then ";
    wanted += pattern.text();
    if (!isMet) continue;
    next =
        std::find_if(next, events.end(), [&](const auto& event) { return pattern.matches(event); });
    isMet = next != events.end();
    if (isMet) ++next;
  }
  return isMet ? Outcome{} : unmet("expected " + wanted + ", but there was" + there);
}

}  // namespace keyrow::sim
