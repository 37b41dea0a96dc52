#pragma once

#include <chrono>
#include <expected>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/SystemLog.h"

namespace keyrow::macos {

/// `SystemLog` on the unified log.
class MacSystemLog final : public SystemLog {
 public:
  std::unique_ptr<Logger> makeLogger(std::string_view subsystem,
                                     std::string_view category) override;
  std::expected<std::vector<LogEntry>, SystemError> entriesSince(
      std::chrono::system_clock::time_point date) override;
};

}  // namespace keyrow::macos
