#pragma once

#include <chrono>
#include <string>

namespace keyrow {

/// How finely a date is written.
enum class Iso8601Precision { seconds, milliseconds };

/// The date in UTC as `NSISO8601DateFormatter` writes it with the internet date-time options,
/// and with fractional seconds for the finer precision: "2024-03-01T09:30:00Z" or
/// "2024-03-01T09:30:00.250Z". What is finer is cut off.
std::string iso8601Text(std::chrono::system_clock::time_point date,
                        Iso8601Precision precision = Iso8601Precision::milliseconds);

}  // namespace keyrow
