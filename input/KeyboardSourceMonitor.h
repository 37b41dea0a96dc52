#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/AppSettings.h"
#include "core/KeyboardDeviceSource.h"
#include "input/HidManagerOpener.h"
#include "platform/Clock.h"
#include "platform/HidManagers.h"
#include "platform/InputMonitoring.h"
#include "platform/SystemLog.h"
#include "platform/Text.h"

namespace keyrow {

/// Tells which keyboard produced a key event: remembers for a moment which keyboard
/// sent each input, and attributes an event to the one whose input lies closest in
/// time. Introduces each keyboard to the log once.
///
/// Main thread only, except `source(forEventTimestamp)`.
class KeyboardSourceMonitor {
 public:
  /// What it uses. `hardwareLog` is the logger of the "hardware" category.
  struct Uses {
    HidManagers& hidManagers;
    InputMonitoring& inputMonitoring;
    Clock& clock;
    Text& text;
    const AppSettings& settings;
    Logger& hardwareLog;
  };

  explicit KeyboardSourceMonitor(const Uses& uses);

  /// Starts listening to every keyboard; does nothing when it listens already, unless the user
  /// has changed what Keyrow may. When the system refuses, that is logged, and a later call tries
  /// again. As long as the user has not said whether Keyrow may, nothing happens.
  void startMonitoring();

  /// Stops listening and forgets every sample and keyboard.
  void stopMonitoring();

  /// Whether it listens, and still may.
  bool isMonitoring() const { return manager_ && !opener_.isOutdated(); }

  /// Whether it listens without a keyboard that another program had to itself when it began.
  bool lacksKeyboard() const { return isMonitoring() && opener_.lacksKeyboard(); }

  /// The keyboards that are connected; none while it does not listen.
  std::vector<KeyboardDeviceSource> keyboards() const;

  /// What a keyboard tells of itself: asks the device for each property.
  static KeyboardDeviceSource readSource(HidDevice& device, std::optional<std::uint64_t> registryID,
                                         Text& text);

  /// The keyboard that produced the key event with this timestamp, in mach ticks, or in
  /// nanoseconds where it can be no ticks (`eventTicks`); null when none can be told. Safe to call
  /// from any thread.
  std::shared_ptr<const KeyboardDeviceSource> source(std::uint64_t forEventTimestamp);

 private:
  using SharedSource = std::shared_ptr<const KeyboardDeviceSource>;

  struct KeyboardSample {
    /// Mach absolute-time ticks.
    std::uint64_t timestamp;
    SharedSource source;
  };

  std::uint64_t ticksOf(std::uint64_t eventTimestamp);
  void handleInputValue(const HidInputValue& value);
  void dropSamplesBefore(std::uint64_t timestamp);
  const KeyboardSample& nearestSample(std::uint64_t timestamp) const;
  SharedSource resolveSource(HidDevice& device);
  void logOnce(const KeyboardDeviceSource& source);
  void logKeyboardsAgain();

  static constexpr std::size_t maximumSampleCount = 64;

  const Uses use_;
  const MachTimebase timebase_;

  /// The largest distance at which a sample is attributed to an event, in mach ticks.
  const std::uint64_t sampleMatchWindow_;
  /// The largest distance accepted when only one sample is held, in mach ticks.
  const std::uint64_t singleSampleWindow_;

  /// Guards `recentSamples`, `cachedSources` and `loggedSourceKeys`.
  std::mutex lock_;
  /// In the order of their arrival.
  std::vector<KeyboardSample> recentSamples_;
  /// Whether that is also the order of their timestamps, as it is unless the system mixes
  /// them up.
  bool isInOrder_ = true;
  /// By registry entry ID; those that have told their numbers.
  std::unordered_map<std::uint64_t, SharedSource> cachedSources_;
  /// The `sourceDescription` of every keyboard that the log knows.
  std::unordered_set<std::string> loggedSourceKeys_;

  /// Of both threads: the log has been told of events whose time is in nanoseconds.
  std::atomic<bool> hasToldOfNanoseconds_{false};

  HidManagerOpener opener_;
  /// Present while monitoring runs.
  std::unique_ptr<HidManager> manager_;
  ObserverToken diagnosticsSettingObserver_;
};

}  // namespace keyrow
