#include "app/RequestReceiver.h"

#include <utility>

#include "core/AppIdentifier.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// Questions that arrive meanwhile share an answer.
constexpr auto questionTime = 100ms;

/// How often changes are looked for while somebody watches.
constexpr auto lookInterval = 250ms;

}  // namespace

void RequestReceiver::start() {
  observer_ = use_.distributedNotificationCenter.addObserver(
      requestNotification::request, std::string{appIdentifier},
      [this](const std::optional<PropertyDictionary>& userInfo) { receive(userInfo); });
}

void RequestReceiver::stop() {
  observer_ = {};
  sharedAnswer_ = {};
  nextLook_ = {};
  questions_.clear();
  isLookWanted_ = false;
  told_.reset();
}

void RequestReceiver::receive(const std::optional<PropertyDictionary>& userInfo) {
  const auto request = requestFrom(userInfo);
  if (!request || !take(*request)) return;
  if (!request->isQuestion()) return carryOut(*request);
  if (request->kind == Request::Kind::watch) keepWatching();
  answerLater(*request);
}

/// Whether it is for this Keyrow, and came in time, and only once.
bool RequestReceiver::take(const Request& request) {
  if (!use_.takesRequests()) return false;
  // Whoever asked longer ago has given up: what was reported as not done is never done.
  const auto now = use_.clock.uptime();
  const auto tooOld = now - requestLifetime;
  if (request.time > now || request.time <= tooOld) return false;
  std::erase_if(taken_, [tooOld](const auto& one) { return one.second <= tooOld; });
  // Nor is anything done twice.
  return taken_.emplace(request.number, request.time).second;
}

void RequestReceiver::carryOut(const Request& request) {
  post({.numbers = {request.number}});
  const auto problem = use_.commands.carryOut(request);
  post({.numbers = {request.number},
        .problem = problem,
        .status = propertyDictionary(use_.status())});
  if (told_) announceChange();
}

void RequestReceiver::answerLater(const Request& question) {
  questions_.push_back(question.number);
  // A watch asks by itself, whatever state the Mac is in.
  isLookWanted_ |= question.kind == Request::Kind::status;
  if (questions_.size() > 1) return;
  sharedAnswer_ = use_.mainQueue.after(questionTime, [this] { answerQuestions(); });
}

void RequestReceiver::answerQuestions() {
  const auto numbers = std::exchange(questions_, {});
  const bool isLookWanted = std::exchange(isLookWanted_, false);
  if (!use_.takesRequests()) return;
  if (isLookWanted) use_.look();
  post({.numbers = numbers, .status = propertyDictionary(use_.status())});
}

void RequestReceiver::keepWatching() {
  const bool isWatched = told_.has_value();
  watchedUntil_ = use_.clock.uptime() + watchLifetime;
  if (isWatched) return;
  told_ = use_.status();
  nextLook_ = use_.mainQueue.after(lookInterval, [this] { lookForChanges(); });
}

void RequestReceiver::lookForChanges() {
  if (use_.clock.uptime() >= watchedUntil_ || !use_.takesRequests()) {
    told_.reset();
    return;
  }
  announceChange();
  nextLook_ = use_.mainQueue.after(lookInterval, [this] { lookForChanges(); });
}

void RequestReceiver::announceChange() {
  auto status = use_.status();
  if (status == told_) return;
  use_.distributedNotificationCenter.post(requestNotification::change, appIdentifier,
                                          propertyDictionary(status));
  told_ = std::move(status);
}

void RequestReceiver::post(const Answer& answer) {
  use_.distributedNotificationCenter.post(requestNotification::answer, appIdentifier,
                                          userInfo(answer));
}

}  // namespace keyrow
