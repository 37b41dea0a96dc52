#include "app/InstanceTakeover.h"

#include <algorithm>
#include <string_view>

#include "app/AppLogTexts.h"
#include "core/AppIdentifier.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// How long older instances have to end by themselves, and then after they were forced.
constexpr auto politeTimeout = 2s;
constexpr auto forcedTimeout = 1s;
constexpr auto pollInterval = 20ms;

constexpr std::string_view targetPIDKey = "targetPID";
constexpr std::string_view sourcePIDKey = "sourcePID";
/// When it was posted: the time since boot, in nanoseconds.
constexpr std::string_view timeKey = "time";

std::string notificationName() { return std::string{appIdentifier} + ".instanceTakeover"; }

}  // namespace

void InstanceTakeover::registerInstanceTakeoverObserver() {
  if (instanceTakeoverObserver_) return;
  instanceTakeoverObserver_ = use_.distributedNotificationCenter.addObserver(
      notificationName(), use_.bundle.identifier(),
      [this](const std::optional<PropertyDictionary>& userInfo) {
        handleInstanceTakeover(userInfo);
      });
}

void InstanceTakeover::takeOverPreviousInstances() {
  const auto bundleIdentifier = use_.bundle.identifier();
  if (!bundleIdentifier) return;
  auto others = use_.workspace.runningApplications(*bundleIdentifier);
  std::erase_if(others, [own = use_.process.processIdentifier()](const auto& other) {
    return other->processIdentifier() == own;
  });
  if (others.empty()) return;

  for (const auto& other : others) {
    postInstanceTakeover(other->processIdentifier(), *bundleIdentifier);
    other->terminate();
  }
  if (waitForTermination(others, politeTimeout)) return;

  std::erase_if(others, [](const auto& other) { return other->isTerminated(); });
  if (others.empty()) return;
  use_.modePolicy.takesOver();
  for (const auto& other : others) {
    if (!other->terminate()) other->forceTerminate();
  }
  if (waitForTermination(others, forcedTimeout)) return;
  use_.appLog.notice(appLogText::instanceDidNotExit);
}

void InstanceTakeover::postInstanceTakeover(std::int32_t targetProcess,
                                            const std::string& bundleIdentifier) {
  use_.distributedNotificationCenter.post(
      notificationName(), bundleIdentifier,
      {{std::string{targetPIDKey}, targetProcess},
       {std::string{sourcePIDKey}, use_.process.processIdentifier()},
       {std::string{timeKey}, use_.clock.uptime().count()}});
}

bool InstanceTakeover::waitForTermination(const RunningApplications& applications,
                                          std::chrono::nanoseconds timeout) {
  const auto deadline = use_.clock.uptime() + timeout;
  for (;;) {
    if (std::ranges::all_of(applications, [](const auto& one) { return one->isTerminated(); })) {
      return true;
    }
    if (use_.clock.uptime() >= deadline) return false;
    use_.mainRunLoop.run(pollInterval);
  }
}

void InstanceTakeover::handleInstanceTakeover(const std::optional<PropertyDictionary>& userInfo) {
  if (!userInfo) return;
  const auto found = userInfo->find(targetPIDKey);
  const auto* target = found == userInfo->end() ? nullptr : found->second.integer();
  if (!target || *target != use_.process.processIdentifier()) return;

  use_.modePolicy.yields(/*isTooLate=*/hasGoneOn(*userInfo));
  use_.application.terminate();
}

/// Whether the one that posted this runs, and has waited as long as it waits: whoever hung reads it
/// then.
bool InstanceTakeover::hasGoneOn(const PropertyDictionary& userInfo) {
  const auto posted = userInfo.find(timeKey);
  const auto source = userInfo.find(sourcePIDKey);
  const auto* time = posted == userInfo.end() ? nullptr : posted->second.integer();
  const auto* newer = source == userInfo.end() ? nullptr : source->second.integer();
  if (!time || !newer) return false;
  const auto deadline = use_.clock.uptime() - politeTimeout - forcedTimeout;
  if (*time > deadline.count()) return false;
  const auto instances = use_.workspace.runningApplications(appIdentifier);
  return std::ranges::any_of(
      instances, [newer](const auto& one) { return one->processIdentifier() == *newer; });
}

}  // namespace keyrow
