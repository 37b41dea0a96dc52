#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "platform/PropertyValue.h"

namespace keyrow::fuzz {

inline bool isSame(const PropertyDictionary& a, const PropertyDictionary& b);

/// Whether the values are the same; other than for ==, NaN is the same as NaN.
inline bool isSame(const PropertyValue& a, const PropertyValue& b) {
  if (a.dictionary() && b.dictionary()) return isSame(*a.dictionary(), *b.dictionary());
  if (a.floatingPoint() && b.floatingPoint() && std::isnan(*a.floatingPoint())) {
    return std::isnan(*b.floatingPoint());
  }
  return a == b;
}

inline bool isSame(const PropertyDictionary& a, const PropertyDictionary& b) {
  return std::ranges::equal(a, b, [](const auto& one, const auto& other) {
    return one.first == other.first && isSame(one.second, other.second);
  });
}

/// The dictionary without the entries of these keys.
inline PropertyDictionary without(PropertyDictionary dictionary,
                                  const std::vector<std::string>& keys) {
  for (const auto& key : keys) dictionary.erase(key);
  return dictionary;
}

}  // namespace keyrow::fuzz
