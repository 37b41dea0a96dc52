#include <IOKit/IOKitLib.h>
#include <IOKit/hidsystem/IOHIDLib.h>

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/IOObject.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacHidConnection final : public HidConnection {
 public:
  explicit MacHidConnection(io_connect_t connection) : connection_{connection} {}
  ~MacHidConnection() override { IOServiceClose(connection_); }

  IOReturn setParameter(std::string_view key, const PropertyValue& value) override {
    return IOHIDSetCFTypeParameter(connection_, cfString(key).get(), cfObject(value).get());
  }

  std::expected<bool, IOReturn> modifierLockState(std::int32_t selector) override {
    bool isLocked = false;
    const auto result = IOHIDGetModifierLockState(connection_, selector, &isLocked);
    if (result != kIOReturnSuccess) return std::unexpected{result};
    return isLocked;
  }

 private:
  const io_connect_t connection_;
};

class MacHidService final : public HidService {
 public:
  explicit MacHidService(IOObject service) : service_{std::move(service)} {}

  std::optional<PropertyValue> entry(std::string_view property, std::string_view key) override {
    const auto dictionary = CFRef<CFTypeRef>::adopt(IORegistryEntryCreateCFProperty(
        service_.get(), cfString(property).get(), kCFAllocatorDefault, kNilOptions));
    return dictionaryEntry(dictionary.get(), key);
  }

  std::expected<std::unique_ptr<HidConnection>, IOReturn> open(
      std::uint32_t connectionType) override {
    io_connect_t connection = IO_OBJECT_NULL;
    const auto result =
        IOServiceOpen(service_.get(), mach_task_self(), connectionType, &connection);
    if (result != kIOReturnSuccess) return std::unexpected{result};
    return std::make_unique<MacHidConnection>(connection);
  }

 private:
  const IOObject service_;
};

class MacHidSystem final : public HidSystem {
 public:
  std::unique_ptr<HidService> matchingService(std::string_view className) override {
    const std::string name{className};
    // The look-up takes over the matching dictionary.
    auto service = IOObject::adopt(
        IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching(name.c_str())));
    return service ? std::make_unique<MacHidService>(std::move(service)) : nullptr;
  }
};

}  // namespace

std::unique_ptr<HidSystem> makeHidSystem() { return std::make_unique<MacHidSystem>(); }

}  // namespace keyrow::macos
