#include "sim/scenario/Stage.h"

#include <algorithm>
#include <ranges>

namespace keyrow::sim {

Stage::Stage() {
  for (const char* application :
       {"com.apple.finder", "com.apple.systempreferences", "com.apple.SystemSettings"}) {
    mac.applications.install(application);
  }
}

SimulatedProcess* Stage::process() {
  for (const auto& process : std::views::reverse(processes_)) {
    if (!process->hasEnded()) return process.get();
  }
  return nullptr;
}

int Stage::runningCount() {
  return static_cast<int>(
      std::ranges::count_if(processes_, [](const auto& process) { return !process->hasEnded(); }));
}

bool Stage::isRunning(OpenHandles::ProcessID processID) {
  return std::ranges::any_of(processes_, [processID](const auto& process) {
    return process->processID() == processID && !process->hasEnded();
  });
}

SimulatedProcess& Stage::startKeyrow() {
  processes_.push_back(std::make_unique<SimulatedProcess>(mac, ++lastProcessID_));
  return *processes_.back();
}

void Stage::changeKey(const std::string& keyboard, const NamedKey& key, bool isDown) {
  /// `kHIDPage_KeyboardOrKeypad` (IOHIDUsageTables.h).
  constexpr std::uint32_t keyboardPage = 7;
  if (const auto device = mac.keyboards.find(keyboard)) mac.sendInput(device, keyboardPage);

  if (isDown) {
    heldFlags_ |= key.flags;
  } else {
    heldFlags_ &= ~key.flags;
  }
  auto type = isDown ? keyEventType::keyDown : keyEventType::keyUp;
  if (key.flags != 0) type = keyEventType::flagsChanged;
  mac.postKeyEvent(
      type, {.timestamp = mac.machAbsoluteTime(), .flags = heldFlags_, .keyCode = key.keyCode});
}

void Stage::beginAction() {
  std::erase_if(processes_, [](const auto& process) { return process->hasEnded(); });
  logLinesBefore_ = mac.log.lines().size();
  eventsBefore_ = mac.timeline.events().size();
}

std::vector<LogEntry> Stage::recentLog() const {
  std::vector<LogEntry> entries;
  const auto lines = mac.log.lines();
  for (auto index = logLinesBefore_; index < lines.size(); ++index) {
    entries.push_back(lines[index].entry);
  }
  return entries;
}

std::vector<TimelineEvent> Stage::recentTimeline() const {
  auto events = mac.timeline.events();
  events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(eventsBefore_));
  return events;
}

}  // namespace keyrow::sim
