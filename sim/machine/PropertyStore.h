#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyValue.h"
#include "sim/machine/ObserverList.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// The preferences on disk: for each domain, values by key. They outlive the processes.
/// Safe to use from any thread.
class PropertyStore {
 public:
  /// Changes appear on the timeline as events of this kind: `preference` for the system
  /// preference, `defaults` for settings.
  PropertyStore(Timeline& timeline, TimelineEvent::Kind kind) : timeline_{timeline}, kind_{kind} {}

  std::optional<PropertyValue> value(std::string_view domain, std::string_view key) const;

  /// Sets the value, or removes it when it is absent.
  void setValue(std::string_view domain, std::string_view key, std::optional<PropertyValue> value);

  /// From now on an administrator manages this value, whatever else is stored there; no more
  /// where it is absent.
  void manage(std::string_view domain, std::string_view key, std::optional<PropertyValue> value);
  bool isManaged(std::string_view domain, std::string_view key) const;

  /// All values of a domain.
  PropertyDictionary domain(std::string_view domain) const;

  /// Calls `handler` after every change of a value in this domain.
  Registration observe(std::string_view domain, std::function<void()> handler);

  /// Grows with every change.
  std::uint64_t changeCount() const { return changeCount_; }

  /// How often `setValue` was called.
  int writeCount() const;

 private:
  void notify(std::string_view domain) const;
  /// False where that makes no difference.
  bool change(std::string_view domain, std::string_view key, std::optional<PropertyValue> value);
  void tell(std::string_view key, const std::optional<PropertyValue>& before,
            const std::optional<PropertyValue>& after);
  bool tellOverrides(const std::optional<PropertyValue>& before,
                     const std::optional<PropertyValue>& after);

  Timeline& timeline_;
  const TimelineEvent::Kind kind_;
  /// Guards the fields below.
  mutable std::mutex mutex_;
  std::map<std::string, PropertyDictionary, std::less<>> domains_;
  /// What administrators manage.
  std::map<std::string, PropertyDictionary, std::less<>> managed_;
  int writeCount_ = 0;
  /// Main thread only.
  std::map<std::string, ObserverList<>, std::less<>> observers_;
  std::atomic<std::uint64_t> changeCount_{0};
};

}  // namespace keyrow::sim
