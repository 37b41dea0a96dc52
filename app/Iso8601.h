#pragma once

#include <chrono>
#include <string>

namespace keyrow {

/// The date in UTC as `NSISO8601DateFormatter` writes it with the internet date-time and
/// fractional-seconds options, for example "2024-03-01T09:30:00.250Z".
std::string iso8601Text(std::chrono::system_clock::time_point date);

}  // namespace keyrow
