#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace keyrow {

class PropertyValue;

/// A property-list dictionary, ordered by key.
using PropertyDictionary = std::map<std::string, PropertyValue, std::less<>>;

/// One property-list object as macOS hands it around: Boolean, integer, floating
/// point, string or dictionary. A Boolean is never equal to a number. "Absent" is
/// not a value: it is a `std::optional<PropertyValue>` without one.
class PropertyValue {
 public:
  PropertyValue(bool value) : value_{value} {}
  PropertyValue(int value) : value_{std::int64_t{value}} {}
  PropertyValue(std::int64_t value) : value_{value} {}
  PropertyValue(double value) : value_{value} {}
  PropertyValue(std::string value) : value_{std::move(value)} {}
  PropertyValue(std::string_view value) : value_{std::string{value}} {}
  PropertyValue(const char* value) : value_{std::string{value}} {}
  PropertyValue(PropertyDictionary value) : value_{std::move(value)} {}

  /// The value when it is of just this type, else null.
  const bool* boolean() const { return std::get_if<bool>(&value_); }
  const std::int64_t* integer() const { return std::get_if<std::int64_t>(&value_); }
  const double* floatingPoint() const { return std::get_if<double>(&value_); }
  const std::string* string() const { return std::get_if<std::string>(&value_); }
  const PropertyDictionary* dictionary() const { return std::get_if<PropertyDictionary>(&value_); }

  /// What `NSNumber.boolValue` makes of it: a Boolean as it is, a number whether it is
  /// not zero; absent for every other type.
  std::optional<bool> boolValue() const {
    if (const auto* value = boolean()) return *value;
    if (const auto* value = integer()) return *value != 0;
    if (const auto* value = floatingPoint()) return *value != 0;
    return std::nullopt;
  }

  friend bool operator==(const PropertyValue&, const PropertyValue&) = default;

 private:
  std::variant<bool, std::int64_t, double, std::string, PropertyDictionary> value_;
};

}  // namespace keyrow
