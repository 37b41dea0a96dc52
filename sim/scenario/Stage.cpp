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
    if (!process->hasEnded() && process->user() == mac.sessions.active()) return process.get();
  }
  return nullptr;
}

SimulatedProcess* Stage::process(OpenHandles::ProcessID processID) {
  const auto found = std::ranges::find_if(processes_, [processID](const auto& process) {
    return process->processID() == processID && !process->hasEnded();
  });
  return found == processes_.end() ? nullptr : found->get();
}

std::vector<SimulatedProcess*> Stage::running() {
  std::vector<SimulatedProcess*> running;
  for (const auto& process : processes_) {
    if (!process->hasEnded()) running.push_back(process.get());
  }
  return running;
}

int Stage::runningCount(const std::string& user) const {
  return static_cast<int>(std::ranges::count_if(processes_, [&user](const auto& process) {
    return !process->hasEnded() && process->user() == user;
  }));
}

void Stage::askAllToQuit() {
  for (const auto& process : processes_) {
    if (process->user() == mac.sessions.active()) process->quit();
  }
}

std::string Stage::runningProcesses() const {
  std::string list;
  for (const auto& process : processes_) {
    if (process->hasEnded()) continue;
    list += (list.empty() ? "" : " ") + std::to_string(process->processID());
  }
  return list.empty() ? "none" : list;
}

Outcome Stage::tell(std::optional<OpenHandles::ProcessID> processID,
                    const std::function<Outcome(SimulatedProcess&)>& action) {
  auto* meant = processID ? process(*processID) : process();
  if (meant) return action(*meant);
  if (!processID || !process()) return unplayable("Keyrow is not running");
  return unplayable("Keyrow " + std::to_string(*processID) + " is not running, but " +
                    runningProcesses());
}

Outcome Stage::touch(const std::function<Outcome(SimulatedProcess&)>& action) {
  return tell({}, [&](SimulatedProcess& keyrow) {
    const auto* alert = mac.screen.openAlertOf(keyrow.processID());
    if (!alert) return action(keyrow);
    return unplayable("the alert " + quoted(alert->messageText) + " has to be answered first");
  });
}

Outcome Stage::noSuchKeyboard(std::string_view name) const {
  auto message = "no keyboard " + std::string{name} + " is attached";
  std::string others;
  for (const auto& other : mac.keyboards.attachedNames()) {
    others += (others.empty() ? ", but " : ", ") + other;
  }
  return unplayable(message + others);
}

Outcome Stage::keyrowMissing(std::string_view expected) {
  return unmet("expected " + std::string{expected} + ", but Keyrow is not running");
}

SimulatedProcess& Stage::startKeyrow() {
  processes_.push_back(std::make_unique<SimulatedProcess>(mac, ++lastProcessID_));
  return *processes_.back();
}

SimulatedTool& Stage::startTool(bool isRoot, const std::optional<std::string>& user) {
  std::erase_if(tools_, [](const auto& tool) { return tool->exitStatus().has_value(); });
  tools_.push_back(std::make_unique<SimulatedTool>(mac, ++lastToolProcessID_,
                                                   user.value_or(mac.sessions.active()), isRoot));
  return *tools_.back();
}

bool Stage::interruptTools() {
  return std::erase_if(tools_, [](const auto& tool) { return !tool->exitStatus(); }) > 0;
}

std::optional<int> Stage::toolExitStatus() const {
  return tools_.empty() ? std::nullopt : tools_.back()->exitStatus();
}

void Stage::beginAction() {
  constexpr std::uint64_t mostEvents = 1'000'000;
  std::erase_if(processes_, [](const auto& process) { return process->hasEnded(); });
  logLinesBefore_ = mac.log.size();
  mac.timeline.clear();
  mac.scheduler.allow(mostEvents);
  for (std::size_t call = 0; call < callsBefore_.size(); ++call) {
    callsBefore_[call] = mac.faults.callCount(static_cast<PortCall>(call));
  }
}

std::vector<LogEntry> Stage::recentLog() const {
  std::vector<LogEntry> entries;
  for (auto& line : mac.log.lines(logLinesBefore_)) entries.push_back(std::move(line.entry));
  return entries;
}

bool Stage::hasLogged(std::string_view beginning) const {
  return std::ranges::any_of(recentLog(), [beginning](const LogEntry& entry) {
    return entry.message.starts_with(beginning);
  });
}

std::string Stage::leaks() {
  std::string leaks;
  for (const auto& [handle, count] : mac.openHandles.all()) {
    const auto& [kind, owner] = handle;
    const bool isTool =
        std::ranges::any_of(tools_, [&](const auto& tool) { return tool->processID() == owner; });
    const bool runs = process(owner) || isTool;
    if (runs && kind != "HidService" && kind != "HidConnection") continue;
    leaks += (leaks.empty() ? "" : ", ") + std::to_string(count) + " " + kind;
  }
  return leaks;
}

std::uint64_t Stage::recentCallCount(PortCall call) const {
  return mac.faults.callCount(call) - callsBefore_[static_cast<std::size_t>(call)];
}

}  // namespace keyrow::sim
