#include "sim/ports/SimulatedSystemLog.h"

#include <string>
#include <utility>

namespace keyrow::sim {

namespace {

class SimulatedLogger final : public Logger {
 public:
  SimulatedLogger(SimulatedMac& mac, OpenHandles::ProcessID process, std::string_view subsystem,
                  std::string_view category)
      : mac_{mac}, process_{process}, subsystem_{subsystem}, category_{category} {}

  void write(LogLevel level, std::string_view message) override {
    mac_.log.write(
        {process_, {mac_.wallClock(), level, subsystem_, category_, std::string{message}}});
  }

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
  const std::string subsystem_;
  const std::string category_;
};

}  // namespace

std::unique_ptr<Logger> SimulatedSystemLog::makeLogger(std::string_view subsystem,
                                                       std::string_view category) {
  return std::make_unique<SimulatedLogger>(mac_, process_, subsystem, category);
}

std::expected<std::vector<LogEntry>, SystemError> SimulatedSystemLog::entriesSince(
    std::chrono::system_clock::time_point date) {
  if (!mac_.call(PortCall::readLog)) {
    return std::unexpected{SystemError{std::nullopt, "OSLogErrorDomain", -50}};
  }
  std::vector<LogEntry> entries;
  for (auto& line : mac_.log.linesSince(date)) {
    if (line.process == process_) entries.push_back(std::move(line.entry));
  }
  return entries;
}

}  // namespace keyrow::sim
