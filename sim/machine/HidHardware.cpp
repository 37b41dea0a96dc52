#include "sim/machine/HidHardware.h"

#include <string>
#include <utility>

namespace keyrow::sim {

namespace {

std::optional<PropertyValue> entryOf(const std::optional<PropertyValue>& parameters,
                                     std::string_view key) {
  const auto* dictionary = parameters ? parameters->dictionary() : nullptr;
  if (!dictionary) return std::nullopt;
  const auto found = dictionary->find(key);
  return found == dictionary->end() ? std::nullopt : std::optional{found->second};
}

std::string_view nameOfMode(const std::optional<PropertyValue>& parameters) {
  const auto mode = entryOf(parameters, hidFKeyModeKey);
  if (mode == PropertyValue{0}) return "special";
  if (mode == PropertyValue{1}) return "standard";
  return "unreadable";
}

}  // namespace

std::optional<PropertyValue> HidHardware::parameters() const {
  const std::scoped_lock guard{mutex_};
  return parameters_;
}

void HidHardware::setParameters(std::optional<PropertyValue> parameters) {
  const std::scoped_lock guard{mutex_};
  publish(std::move(parameters));
}

std::optional<PropertyValue> HidHardware::parameter(std::string_view key) const {
  const std::scoped_lock guard{mutex_};
  return entryOf(parameters_, key);
}

void HidHardware::setParameter(std::string_view key, std::optional<PropertyValue> value) {
  const std::scoped_lock guard{mutex_};
  const auto* dictionary = parameters_ ? parameters_->dictionary() : nullptr;
  auto changed = dictionary ? *dictionary : PropertyDictionary{};
  changed.erase(std::string{key});
  if (value) changed.emplace(key, *value);
  publish(std::move(changed));
}

std::string_view HidHardware::modeName() const {
  const std::scoped_lock guard{mutex_};
  return nameOfMode(parameters_);
}

std::vector<PropertyValue> HidHardware::writtenValues(std::size_t start) const {
  const std::scoped_lock guard{mutex_};
  return {writtenValues_.begin() + static_cast<std::ptrdiff_t>(start), writtenValues_.end()};
}

std::size_t HidHardware::writtenCount() const {
  const std::scoped_lock guard{mutex_};
  return writtenValues_.size();
}

void HidHardware::noteWrittenValue(const PropertyValue& value) {
  const std::scoped_lock guard{mutex_};
  writtenValues_.push_back(value);
}

void HidHardware::publish(std::optional<PropertyValue> parameters) {
  const auto before = nameOfMode(parameters_);
  parameters_ = std::move(parameters);
  const auto after = nameOfMode(parameters_);
  timeline_.addChange(TimelineEvent::Kind::hardware, {}, std::string{before}, std::string{after});
}

}  // namespace keyrow::sim
