#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/Request.h"
#include "core/Status.h"
#include "core/Words.h"
#include "fuzz/ArbitraryValues.h"
#include "fuzz/Require.h"
#include "fuzz/SameValues.h"
#include "fuzz/Utf8.h"
#include "sim/scenario/Stage.h"
#include "tool/Doctor.h"
#include "tool/Report.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using fuzz::isSame;
using fuzz::require;

constexpr std::array words{"special",
                           "standard",
                           "follow",
                           "default",
                           "on",
                           "none",
                           "F5",
                           "shortcut",
                           "046d:c33f",
                           "05ac:0267",
                           "com.apple.Mail",
                           "showCapsLockIndicator",
                           "",
                           "fnReplacementModifier"};

std::string arbitraryWord(FuzzedDataProvider& data) {
  return data.ConsumeBool() ? std::string{data.PickValueInArray(words)}
                            : fuzz::arbitraryString(data);
}

/// Other programs post anything to a Keyrow that runs.
class Requests {
 public:
  explicit Requests(FuzzedDataProvider& data) : data_{data} {
    // An event tap needs a thread, and has nothing to do with what is tried here.
    stage_.mac.faults.fail(PortCall::createEventTap, Faults::always);
    stage_.mac.applications.install("com.apple.Mail");
    stage_.launchKeyrow();
    constexpr int enough = 30;
    for (int count = 0; count < enough && data_.remaining_bytes() > 0; ++count) {
      if (data_.ConsumeBool()) {
        postAnything();
      } else {
        postRequest();
      }
    }
  }

 private:
  void postAnything() {
    PropertyDictionary info;
    for (const auto* key : {"number", "nanosecondsSinceBoot", "request", "subject", "value"}) {
      if (auto value = fuzz::arbitraryOptionalValue(data_)) info.insert_or_assign(key, *value);
    }
    post(data_.ConsumeBool() ? std::optional{info} : std::nullopt);
  }

  void postRequest() {
    Request request{.number = fuzz::arbitraryString(data_),
                    .time = std::chrono::nanoseconds{fuzz::arbitraryInteger(data_)},
                    .kind = data_.PickValueInArray(kinds),
                    .subject = arbitraryWord(data_),
                    .value = arbitraryWord(data_)};
    const auto now = stage_.mac.uptime();
    if (data_.ConsumeBool()) request.time = now - 1ms * data_.ConsumeIntegralInRange(-10, 1100);
    // Each has a number of its own, or is the same once more.
    request.number += std::to_string(++count_);
    const bool isInTime = request.time <= now && request.time > now - requestLifetime;
    const auto before = stored();
    post(userInfo(request));

    const auto answers = answersTo(request.number);
    if (!isInTime) {
      require(answers.empty() && isSame(before, stored()), "what comes too late is never done");
      return;
    }
    require(!answers.empty() && answers.back().status, "what comes in time is answered");
    require(std::ranges::count_if(
                answers, [](const auto& answer) { return answer.status.has_value(); }) == 1,
            "and answered once");
    if (request.isQuestion() || answers.back().problem) {
      require(isSame(before, stored()), "what is refused or only asked changes nothing");
    } else {
      checkChange(request, statusFrom(*answers.back().status));
    }
    const auto after = stored();
    post(userInfo(request));
    require(answersTo(request.number).empty() && isSame(after, stored()), "nothing is done twice");
  }

  static void checkChange(const Request& request, const Status& status) {
    const auto mode = fnStateFromWord(request.value);
    if (request.kind == Request::Kind::setMode) {
      require(mode && status.global == mode, "the global mode is what it was set to");
    } else if (request.kind == Request::Kind::setOverride) {
      const auto found = status.overrides.find(request.subject);
      require(mode && found != status.overrides.end() && found->second == mode,
              "an override is what it was set to");
    } else if (request.kind == Request::Kind::clearOverride) {
      require(!status.overrides.contains(request.subject), "an override is cleared");
    }
  }

  void post(const std::optional<PropertyDictionary>& info) {
    answers_.clear();
    stage_.mac.distributedNotifications.post({.name = std::string{requestNotification::request},
                                              .object = std::string{appIdentifier},
                                              .userInfo = info,
                                              .user = stage_.mac.sessions.active()});
    // Questions wait for others.
    stage_.mac.scheduler.advance(150ms);
  }

  std::vector<Answer> answersTo(const std::string& number) const {
    std::vector<Answer> answers;
    std::ranges::copy_if(answers_, std::back_inserter(answers),
                         [&](const Answer& answer) { return answer.answers(number); });
    return answers;
  }

  PropertyDictionary stored() const { return stage_.mac.defaults.domain(stage_.keyrowDomain()); }

  static constexpr std::array kinds{
      Request::Kind::status,      Request::Kind::watch,       Request::Kind::setMode,
      Request::Kind::toggleMode,  Request::Kind::setOverride, Request::Kind::clearOverride,
      Request::Kind::setKeyboard, Request::Kind::setSetting,
  };

  FuzzedDataProvider& data_;
  Stage stage_;
  int count_ = 0;
  std::vector<Answer> answers_;
  Registration observer_{stage_.mac.distributedNotifications.observe(
      [this](const DistributedNotification& notification) {
        if (notification.name != requestNotification::answer) return;
        auto answer = answerFrom(notification.userInfo);
        require(answer.has_value(), "what Keyrow answers can be read");
        answers_.push_back(*std::move(answer));
      })};
};

/// Anything that comes in place of an answer can be told to people and to programs.
void tellAnything(FuzzedDataProvider& data) {
  const auto value = fuzz::arbitraryValue(data, 5);
  if (!value.dictionary()) return;
  auto dictionary = *value.dictionary();
  for (const auto* key :
       {"mode", "application", "global", "overrides", "keyboardModes", "running"}) {
    if (auto one = fuzz::arbitraryOptionalValue(data)) dictionary.insert_or_assign(key, *one);
  }
  const auto status = statusFrom(dictionary);
  require(statusFrom(propertyDictionary(status)) == status, "a status comes back as it was");
  const tool::Surroundings surroundings{.isSecureInputOn = data.ConsumeBool(),
                                        .secureInputHolder = fuzz::arbitraryString(data)};
  require(!tool::facts(status, surroundings).empty(), "there is always something to tell");
  require(!tool::diagnose(status, surroundings, {.processes = {501, 502}}).empty(),
          "the doctor always says something");
  const auto text = tool::jsonText(status, surroundings);
  require(std::ranges::none_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }),
          "JSON is one line");
  if (fuzz::isUtf8(text)) require(nlohmann::json::accept(text), "JSON is JSON");
}

}  // namespace
}  // namespace keyrow::sim

/// Whatever is asked of a Keyrow that runs, it answers what it has to, once, and does nothing else.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data{bytes, size};
  if (data.ConsumeBool()) {
    keyrow::sim::tellAnything(data);
  } else {
    keyrow::sim::Requests{data};
  }
  return 0;
}
