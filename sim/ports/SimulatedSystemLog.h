#pragma once

#include "platform/SystemLog.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The unified log as one process writes and reads it.
class SimulatedSystemLog final : public SystemLog {
 public:
  SimulatedSystemLog(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, process_{process} {}

  std::unique_ptr<Logger> makeLogger(std::string_view subsystem,
                                     std::string_view category) override;
  std::expected<std::vector<LogEntry>, SystemError> entriesSince(
      std::chrono::system_clock::time_point date) override;

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
};

}  // namespace keyrow::sim
