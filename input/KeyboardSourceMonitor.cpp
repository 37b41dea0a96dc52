#include "input/KeyboardSourceMonitor.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "input/MachTicks.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

std::uint64_t window(std::chrono::nanoseconds duration, MachTimebase timebase,
                     std::uint64_t withoutTimebase) {
  if (timebase.numer == 0) return withoutTimebase;
  return machTicks(static_cast<std::uint64_t>(duration.count()), timebase);
}

std::optional<bool> boolProperty(HidDevice& device, std::string_view key) {
  const auto value = device.property(key);
  return value ? value->boolValue() : std::nullopt;
}

std::optional<std::string> stringProperty(HidDevice& device, std::string_view key) {
  const auto value = device.property(key);
  const auto* string = value ? value->string() : nullptr;
  return string ? std::optional{*string} : std::nullopt;
}

/// The registry hands out 32-bit numbers with a sign; the cast undoes it.
std::optional<std::uint32_t> uint32Property(HidDevice& device, std::string_view key) {
  const auto value = device.property(key);
  const auto* integer = value ? value->integer() : nullptr;
  return integer ? std::optional{static_cast<std::uint32_t>(*integer)} : std::nullopt;
}

std::uint64_t distance(std::uint64_t a, std::uint64_t b) { return a > b ? a - b : b - a; }

}  // namespace

KeyboardSourceMonitor::KeyboardSourceMonitor(const Uses& uses)
    : use_{uses},
      timebase_{uses.clock.machTimebase()},
      sampleMatchWindow_{window(80ms, timebase_, 20'000'000)},
      singleSampleWindow_{window(250ms, timebase_, 250'000'000)},
      opener_{{.hidManagers = uses.hidManagers,
               .inputMonitoring = uses.inputMonitoring,
               .hardwareLog = uses.hardwareLog},
              "keyboard source monitoring"} {
  recentSamples_.reserve(maximumSampleCount);
  diagnosticsSettingObserver_ = use_.settings.observe(BooleanSetting::enhancedDiagnosticsEnabled,
                                                      [this] { logKeyboardsAgain(); });
}

void KeyboardSourceMonitor::startMonitoring() {
  if (manager_ && !opener_.isOutdated()) return;
  manager_.reset();
  manager_ = opener_.open([this](HidManager& manager) {
    manager.setInputValueMatching({{"UsagePage", hidPage::keyboardOrKeypad}});
    manager.registerInputValueCallback(
        [this](const HidInputValue& value) { handleInputValue(value); });
  });
}

void KeyboardSourceMonitor::stopMonitoring() {
  if (!manager_) return;
  manager_.reset();
  const std::scoped_lock guard{lock_};
  recentSamples_.clear();
  isInOrder_ = true;
  cachedSources_.clear();
  loggedSourceKeys_.clear();
}

std::shared_ptr<const KeyboardDeviceSource> KeyboardSourceMonitor::source(
    std::uint64_t forEventTimestamp) {
  const auto eventTime = ticksOf(forEventTimestamp);
  const auto retention = 4 * sampleMatchWindow_;
  const auto cutoff = eventTime > retention ? eventTime - retention : 0;

  const std::scoped_lock guard{lock_};
  dropSamplesBefore(cutoff);
  if (recentSamples_.empty()) return nullptr;

  const auto& best = nearestSample(eventTime);
  const auto reach = recentSamples_.size() == 1 ? std::max(sampleMatchWindow_, singleSampleWindow_)
                                                : sampleMatchWindow_;
  return distance(eventTime, best.timestamp) <= reach ? best.source : nullptr;
}

std::uint64_t KeyboardSourceMonitor::ticksOf(std::uint64_t eventTimestamp) {
  const auto ticks = eventTicks(eventTimestamp, use_.clock.machAbsoluteTime(), timebase_);
  if (ticks != eventTimestamp && !hasToldOfNanoseconds_.exchange(true)) {
    use_.hardwareLog.notice("Key events tell their time in nanoseconds; it is converted to ticks.");
  }
  return ticks;
}

void KeyboardSourceMonitor::dropSamplesBefore(std::uint64_t timestamp) {
  if (isInOrder_ && (recentSamples_.empty() || recentSamples_.front().timestamp >= timestamp))
    return;
  std::erase_if(recentSamples_,
                [timestamp](const KeyboardSample& sample) { return sample.timestamp < timestamp; });
  isInOrder_ = std::ranges::is_sorted(recentSamples_, {}, &KeyboardSample::timestamp);
}

// Of several samples at the same distance the first, which is the oldest, wins.
const KeyboardSourceMonitor::KeyboardSample& KeyboardSourceMonitor::nearestSample(
    std::uint64_t timestamp) const {
  const auto distanceToEvent = [timestamp](const KeyboardSample& sample) {
    return distance(timestamp, sample.timestamp);
  };
  if (!isInOrder_) return *std::ranges::min_element(recentSamples_, {}, distanceToEvent);

  const auto firstAt = [this](std::uint64_t time) {
    return std::ranges::lower_bound(recentSamples_, time, {}, &KeyboardSample::timestamp);
  };
  const auto after = firstAt(timestamp);
  if (after == recentSamples_.begin()) return *after;
  const auto before = std::prev(after);
  if (after != recentSamples_.end() && distanceToEvent(*after) < distanceToEvent(*before)) {
    return *after;
  }
  return *firstAt(before->timestamp);
}

void KeyboardSourceMonitor::handleInputValue(const HidInputValue& value) {
  if (!value.sender || value.usagePage != hidPage::keyboardOrKeypad) return;
  auto source = resolveSource(*value.sender);
  const std::scoped_lock guard{lock_};
  if (recentSamples_.size() >= maximumSampleCount) recentSamples_.erase(recentSamples_.begin());
  isInOrder_ =
      isInOrder_ && (recentSamples_.empty() || recentSamples_.back().timestamp <= value.timestamp);
  recentSamples_.push_back({value.timestamp, std::move(source)});
}

// `kIOHIDBuiltInKey` and the others of IOHIDKeys.h.
KeyboardDeviceSource KeyboardSourceMonitor::readSource(HidDevice& device,
                                                       std::optional<std::uint64_t> registryID,
                                                       Text& text) {
  KeyboardDeviceSource source;
  source.registryID = registryID;
  source.isBuiltIn = boolProperty(device, "Built-In");
  source.vendorID = uint32Property(device, "VendorID");
  source.transport = stringProperty(device, "Transport");
  source.manufacturer = stringProperty(device, "Manufacturer");
  source.product = stringProperty(device, "Product");
  source.locationID = uint32Property(device, "LocationID");
  source.productID = uint32Property(device, "ProductID");
  source.kind = keyboardDeviceKind(source.isBuiltIn, source.transport);
  source.mediaTranslationEligible = source.isMediaTranslationEligible(text);
  return source;
}

std::vector<KeyboardDeviceSource> KeyboardSourceMonitor::keyboards() const {
  std::vector<KeyboardDeviceSource> keyboards;
  if (!isMonitoring()) return keyboards;
  for (const auto& device : manager_->devices()) {
    keyboards.push_back(readSource(*device, device->registryEntryID(), use_.text));
  }
  return keyboards;
}

KeyboardSourceMonitor::SharedSource KeyboardSourceMonitor::resolveSource(HidDevice& device) {
  const auto registryID = device.registryEntryID();
  if (registryID) {
    const std::scoped_lock guard{lock_};
    if (const auto cached = cachedSources_.find(*registryID); cached != cachedSources_.end()) {
      return cached->second;
    }
  }
  auto source =
      std::make_shared<const KeyboardDeviceSource>(readSource(device, registryID, use_.text));
  logOnce(*source);
  // One that lacks a number may just not have been able to tell it.
  if (registryID && source->numbers()) {
    const std::scoped_lock guard{lock_};
    cachedSources_.insert_or_assign(*registryID, source);
  }
  return source;
}

void KeyboardSourceMonitor::logOnce(const KeyboardDeviceSource& source) {
  auto key = source.sourceDescription();
  {
    const std::scoped_lock guard{lock_};
    if (!loggedSourceKeys_.insert(std::move(key)).second) return;
  }
  use_.hardwareLog.info(
      "Observed keyboard source: " +
      source.logDescription(use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled)) +
      ", mediaTranslationEligible=" + (source.mediaTranslationEligible ? "true" : "false"));
}

void KeyboardSourceMonitor::logKeyboardsAgain() {
  const std::scoped_lock guard{lock_};
  loggedSourceKeys_.clear();
  // A cached keyboard is not looked at again, so it would not be logged either.
  cachedSources_.clear();
}

}  // namespace keyrow
