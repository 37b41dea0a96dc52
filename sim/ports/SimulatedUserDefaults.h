#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/UserDefaults.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The user defaults of one application, as a process sees them: of what others write it hears
/// late.
class SimulatedUserDefaults final : public UserDefaults {
 public:
  SimulatedUserDefaults(SimulatedMac& mac, std::string domain)
      : mac_{mac}, domain_{std::move(domain)} {}

  std::optional<PropertyValue> object(std::string_view key) override {
    return mac_.defaults.value(domain_, key);
  }
  std::uint64_t changeCount() override { return mac_.defaults.changeCount(); }
  bool isManaged(std::string_view key) override { return mac_.defaults.isManaged(domain_, key); }
  ObserverToken observeChanges(std::function<void()> handler) override;
  void setObject(std::string_view key, const PropertyValue& value) override { write(key, value); }
  void removeObject(std::string_view key) override { write(key, std::nullopt); }
  bool synchronize() override;

  /// The process ends without waiting: of what it wrote since it last synchronized only the first
  /// gets anywhere.
  void loseWhatIsOnTheWay();

 private:
  void write(std::string_view key, std::optional<PropertyValue> value);

  SimulatedMac& mac_;
  const std::string domain_;
  /// Whether this process has written anything that it has not synchronized.
  bool hasWritten_ = false;
  /// What there was before all it wrote after that.
  std::map<std::string, std::optional<PropertyValue>, std::less<>> before_;
  /// Whether a change is this process's own.
  bool isWriting_ = false;
};

}  // namespace keyrow::sim
