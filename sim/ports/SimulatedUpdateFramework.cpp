#include "sim/ports/SimulatedUpdateFramework.h"

#include <chrono>

#include "core/AppSettings.h"

namespace keyrow::sim {

void SimulatedUpdateFramework::start(UpdateFrameworkDelegate& delegate) {
  context_.mac.trace.add("start updater");
  delegate_ = &delegate;
  context_.mac.scheduler.schedule(Scheduler::Duration{0}, [this, thread = context_.mainThread] {
    thread->deliver([this] {
      askForPermission();
      scheduleCheck();
    });
  });
}

void SimulatedUpdateFramework::scheduleCheck() {
  if (automaticallyChecksForUpdates()) delegate_->willScheduleUpdateCheck();
}

/// Where nobody has said whether it may check by itself, Sparkle asks at the second launch, and at
/// each that follows until it has an answer.
void SimulatedUpdateFramework::askForPermission() {
  if (context_.mac.infoDictionary.contains(settingsKey::SUEnableAutomaticChecks)) return;
  if (context_.mac.defaults.value(domain(), settingsKey::SUEnableAutomaticChecks)) return;
  const bool isFirst = context_.mac.sparkleStarts.insert(domain()).second;
  if (isFirst) return;
  if (!delegate_->shouldPromptForPermissionToCheck()) return;
  context_.mac.screen.note("Sparkle asks whether it may check for updates by itself");
}

void SimulatedUpdateFramework::checkForUpdates() {
  context_.mac.trace.add("check for updates");
  context_.mac.screen.note("Sparkle checks for updates");
}

bool SimulatedUpdateFramework::automaticallyChecksForUpdates() {
  const auto stored = context_.mac.defaults.value(domain(), settingsKey::SUEnableAutomaticChecks);
  if (stored) return stored->boolValue().value_or(false);
  const auto inPlist = context_.mac.infoDictionary.find(settingsKey::SUEnableAutomaticChecks);
  return inPlist != context_.mac.infoDictionary.end() &&
         inPlist->second.boolValue().value_or(false);
}

void SimulatedUpdateFramework::setAutomaticallyChecksForUpdates(bool checks) {
  context_.mac.defaults.setValue(domain(), settingsKey::SUEnableAutomaticChecks, checks);
  // It waits a moment, in case the user thinks better of it.
  context_.mac.scheduler.schedule(std::chrono::seconds{1}, [this, thread = context_.mainThread] {
    thread->deliver([this] { scheduleCheck(); });
  });
}

void SimulatedUpdateFramework::findUpdate(const std::string& version, bool inImmediateFocus) {
  context_.mainThread->deliver([this, version, inImmediateFocus] {
    const bool showsItself = !delegate_->supportsGentleScheduledUpdateReminders() ||
                             delegate_->shouldHandleShowingScheduledUpdate(inImmediateFocus);
    delegate_->willHandleShowingUpdate(showsItself, version, false);
    if (showsItself) context_.mac.screen.note("Sparkle shows version " + version);
  });
}

void SimulatedUpdateFramework::attendToUpdate() {
  context_.mainThread->deliver([this] { delegate_->didReceiveUserAttentionForUpdate(); });
}

void SimulatedUpdateFramework::finishSession() {
  context_.mainThread->deliver([this] { delegate_->willFinishUpdateSession(); });
}

}  // namespace keyrow::sim
