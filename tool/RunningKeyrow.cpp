#include "tool/RunningKeyrow.h"

#include <algorithm>
#include <utility>

#include "core/AppIdentifier.h"

namespace keyrow::tool {

namespace {

using namespace std::chrono_literals;

/// Keyrow drops what is older than `requestLifetime`; what it took right before may still be on
/// its way back.
constexpr auto timeOnTheWay = 250ms;
/// For how long a command that Keyrow has begun is waited for.
constexpr auto longestCommand = 10s;

}  // namespace

std::vector<std::int64_t> RunningKeyrow::processes() const {
  std::vector<std::int64_t> processes;
  for (const auto& application : use_.workspace.runningApplications(appIdentifier)) {
    processes.push_back(application->processIdentifier());
  }
  return processes;
}

bool RunningKeyrow::isSilent() const {
  return std::ranges::any_of(processes(), [this](auto process) {
    return std::ranges::find(silent_, process) != silent_.end();
  });
}

void RunningKeyrow::ask(Request::Kind kind, const std::string& subject, const std::string& value,
                        AnswerHandler handler) {
  const auto now = use_.clock.uptime();
  const Request request{.number = std::to_string(use_.process.processIdentifier()) + "-" +
                                  std::to_string(now.count()) + "-" + std::to_string(++askedCount_),
                        .time = now,
                        .kind = kind,
                        .subject = subject,
                        .value = value};
  handler_ = std::move(handler);
  answerObserver_ = use_.distributedNotificationCenter.addObserver(
      requestNotification::answer, std::string{appIdentifier},
      [this, number = request.number](const std::optional<PropertyDictionary>& userInfo) {
        const auto answer = answerFrom(userInfo);
        if (answer && answer->answers(number)) hear(*answer);
      });
  // Waits twice: when a terminal has let this process stand still, the time is over at once.
  silence_ = use_.mainQueue.after(requestLifetime, [this] { waitFor(timeOnTheWay, std::nullopt); });
  use_.distributedNotificationCenter.post(requestNotification::request, appIdentifier,
                                          userInfo(request));
}

void RunningKeyrow::hear(const Answer& answer) {
  if (answer.status) return settle(answer);
  waitFor(longestCommand, answer);
}

/// Unless there is another answer until then, it stays with this one.
void RunningKeyrow::waitFor(std::chrono::nanoseconds time, std::optional<Answer> answer) {
  silence_ = use_.mainQueue.after(time, [this, answer = std::move(answer)] { settle(answer); });
}

void RunningKeyrow::settle(const std::optional<Answer>& answer) {
  // What has waited may hold the answer, and goes at the end.
  const auto silence = std::exchange(silence_, {});
  const auto observer = std::exchange(answerObserver_, {});
  silent_ = answer ? std::vector<std::int64_t>{} : processes();
  std::exchange(handler_, {})(answer);
}

}  // namespace keyrow::tool
