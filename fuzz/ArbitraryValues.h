#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "core/FnReplacementModifier.h"
#include "platform/PropertyValue.h"

namespace keyrow::fuzz {

/// Any integer, and often one at an edge of what settings mean.
inline std::int64_t arbitraryInteger(FuzzedDataProvider& data) {
  using Limits = std::numeric_limits<std::int64_t>;
  constexpr std::array<std::int64_t, 13> edges{0,
                                               1,
                                               2,
                                               -1,
                                               50,
                                               53,
                                               0xFFFF,
                                               0x10000,
                                               0x10000 + 53,
                                               0x100000000,
                                               -4,
                                               Limits::min(),
                                               Limits::max()};
  return data.ConsumeBool() ? data.PickValueInArray(edges) : data.ConsumeIntegral<std::int64_t>();
}

inline double arbitraryNumber(FuzzedDataProvider& data) {
  using Limits = std::numeric_limits<double>;
  constexpr std::array<double, 10> edges{0.0,
                                         -0.0,
                                         1.0,
                                         53.0,
                                         Limits::quiet_NaN(),
                                         Limits::infinity(),
                                         -Limits::infinity(),
                                         Limits::denorm_min(),
                                         Limits::max(),
                                         Limits::lowest()};
  return data.ConsumeBool() ? data.PickValueInArray(edges) : data.ConsumeFloatingPoint<double>();
}

/// Any bytes, valid UTF-8 or not, and sometimes what a setting may hold.
inline std::string arbitraryString(FuzzedDataProvider& data) {
  if (data.ConsumeIntegralInRange(0, 3) > 0) return data.ConsumeRandomLengthString(48);
  return std::string{data.PickValueInArray(fnReplacementModifierTable).second};
}

/// A value of any type, with dictionaries in dictionaries up to a depth.
inline PropertyValue arbitraryValue(FuzzedDataProvider& data, int depth = 3) {
  switch (data.ConsumeIntegralInRange(0, depth > 0 ? 4 : 3)) {
    case 0:
      return data.ConsumeBool();
    case 1:
      return arbitraryInteger(data);
    case 2:
      return arbitraryNumber(data);
    case 3:
      return arbitraryString(data);
    default: {
      PropertyDictionary dictionary;
      for (auto count = data.ConsumeIntegralInRange(0, 4); count > 0; --count) {
        auto key = arbitraryString(data);
        dictionary.insert_or_assign(std::move(key), arbitraryValue(data, depth - 1));
      }
      return dictionary;
    }
  }
}

inline std::optional<PropertyValue> arbitraryOptionalValue(FuzzedDataProvider& data) {
  if (data.ConsumeIntegralInRange(0, 7) == 0) return std::nullopt;
  return arbitraryValue(data);
}

}  // namespace keyrow::fuzz
