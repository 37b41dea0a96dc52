#include "core/Request.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Properties.h"

namespace keyrow {

namespace {

constexpr std::array<std::pair<Request::Kind, std::string_view>, 8> kinds{{
    {Request::Kind::status, "status"},
    {Request::Kind::watch, "watch"},
    {Request::Kind::setMode, "set mode"},
    {Request::Kind::toggleMode, "toggle mode"},
    {Request::Kind::setOverride, "set override"},
    {Request::Kind::clearOverride, "clear override"},
    {Request::Kind::setKeyboard, "set keyboard"},
    {Request::Kind::setSetting, "set setting"},
}};

/// The words of a dictionary's keys.
namespace word {
constexpr std::string_view number = "number";
constexpr std::string_view time = "nanosecondsSinceBoot";
constexpr std::string_view kind = "request";
constexpr std::string_view subject = "subject";
constexpr std::string_view value = "value";
constexpr std::string_view numbers = "numbers";
constexpr std::string_view problem = "problem";
constexpr std::string_view status = "status";
}  // namespace word

}  // namespace

PropertyDictionary userInfo(const Request& request) {
  const auto kind = std::ranges::find(kinds, request.kind, &decltype(kinds)::value_type::first);
  return {{std::string{word::number}, request.number},
          {std::string{word::time}, std::int64_t{request.time.count()}},
          {std::string{word::kind}, kind->second},
          {std::string{word::subject}, request.subject},
          {std::string{word::value}, request.value}};
}

std::optional<Request> requestFrom(const std::optional<PropertyDictionary>& userInfo) {
  if (!userInfo) return std::nullopt;
  const auto* number = findText(*userInfo, word::number);
  const auto* time = findInteger(*userInfo, word::time);
  const auto* kindText = findText(*userInfo, word::kind);
  const auto* subject = findText(*userInfo, word::subject);
  const auto* value = findText(*userInfo, word::value);
  if (!number || !time || !kindText || !subject || !value) return std::nullopt;
  const auto kind =
      std::ranges::find(kinds, std::string_view{*kindText}, &decltype(kinds)::value_type::second);
  if (kind == kinds.end()) return std::nullopt;
  return Request{.number = *number,
                 .time = std::chrono::nanoseconds{*time},
                 .kind = kind->first,
                 .subject = *subject,
                 .value = *value};
}

bool Answer::answers(std::string_view number) const {
  return std::ranges::find(numbers, number) != numbers.end();
}

PropertyDictionary userInfo(const Answer& answer) {
  PropertyDictionary numbers;
  for (const auto& number : answer.numbers) numbers.emplace(number, true);
  PropertyDictionary info{{std::string{word::numbers}, std::move(numbers)}};
  if (answer.problem) info.emplace(word::problem, *answer.problem);
  if (answer.status) info.emplace(word::status, *answer.status);
  return info;
}

std::optional<Answer> answerFrom(const std::optional<PropertyDictionary>& userInfo) {
  if (!userInfo) return std::nullopt;
  const auto* numbers = findDictionary(*userInfo, word::numbers);
  if (!numbers) return std::nullopt;
  Answer answer;
  for (const auto& [number, isAnswered] : *numbers) answer.numbers.push_back(number);
  if (const auto* problem = findText(*userInfo, word::problem)) answer.problem = *problem;
  if (const auto* status = findDictionary(*userInfo, word::status)) answer.status = *status;
  return answer;
}

}  // namespace keyrow
