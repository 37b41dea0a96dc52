#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/PropertyValue.h"

namespace keyrow {

// What a dictionary holds under a key; null where there is nothing, or something of another type.

inline const PropertyValue* findProperty(const PropertyDictionary& dictionary,
                                         std::string_view key) {
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? nullptr : &found->second;
}

inline const std::string* findText(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* value = findProperty(dictionary, key);
  return value ? value->string() : nullptr;
}

inline const std::int64_t* findInteger(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* value = findProperty(dictionary, key);
  return value ? value->integer() : nullptr;
}

inline const PropertyDictionary* findDictionary(const PropertyDictionary& dictionary,
                                                std::string_view key) {
  const auto* value = findProperty(dictionary, key);
  return value ? value->dictionary() : nullptr;
}

}  // namespace keyrow
