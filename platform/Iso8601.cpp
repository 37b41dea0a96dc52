#include "platform/Iso8601.h"

#include <array>
#include <cstdio>

namespace keyrow {

std::string iso8601Text(std::chrono::system_clock::time_point date, Iso8601Precision precision) {
  using namespace std::chrono;
  const auto day = floor<days>(date);
  const year_month_day calendar{day};
  const hh_mm_ss time{floor<milliseconds>(date - day)};

  std::array<char, 64> text{};
  const auto* format = precision == Iso8601Precision::seconds
                           ? "%04d-%02u-%02uT%02d:%02d:%02dZ"
                           : "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ";
  std::snprintf(text.data(), text.size(), format, static_cast<int>(calendar.year()),
                static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()),
                static_cast<int>(time.subseconds().count()));
  return text.data();
}

}  // namespace keyrow
