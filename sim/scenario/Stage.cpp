#include "sim/scenario/Stage.h"

namespace keyrow::sim {

Stage::Stage() {
  for (const char* application :
       {"com.apple.finder", "com.apple.systempreferences", "com.apple.SystemSettings"}) {
    mac.applications.install(application);
  }
}

void Stage::launchKeyrow() {
  process = std::make_unique<SimulatedProcess>(mac, ++lastProcessID);
  process->launch();
}

std::vector<LogEntry> Stage::recentLog() const {
  std::vector<LogEntry> entries;
  const auto lines = mac.log.lines();
  for (auto index = logLinesBefore; index < lines.size(); ++index) {
    entries.push_back(lines[index].entry);
  }
  return entries;
}

}  // namespace keyrow::sim
