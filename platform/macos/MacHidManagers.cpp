#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDLib.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

/// Borrows the device.
class MacHidDevice final : public HidDevice {
 public:
  explicit MacHidDevice(IOHIDDeviceRef device) : device_{device} {}

  std::optional<std::uint64_t> registryEntryID() override {
    const auto service = IOHIDDeviceGetService(device_);
    if (service == IO_OBJECT_NULL) return std::nullopt;
    std::uint64_t entryID = 0;
    const auto result = IORegistryEntryGetRegistryEntryID(service, &entryID);
    return result == kIOReturnSuccess ? std::optional{entryID} : std::nullopt;
  }

  std::optional<PropertyValue> property(std::string_view key) override {
    return propertyValue(IOHIDDeviceGetProperty(device_, cfString(key).get()));
  }

 private:
  const IOHIDDeviceRef device_;
};

class MacHidManager final : public HidManager {
 public:
  ~MacHidManager() override {
    if (isScheduled_) {
      IOHIDManagerUnscheduleFromRunLoop(manager_.get(), CFRunLoopGetMain(), kCFRunLoopCommonModes);
    }
    if (isOpen_) IOHIDManagerClose(manager_.get(), kIOHIDOptionsTypeNone);
  }

  void setDeviceMatching(std::span<const PropertyDictionary> matching) override {
    const auto dictionaries = CFRef<CFMutableArrayRef>::adopt(
        CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
    for (const auto& dictionary : matching) {
      CFArrayAppendValue(dictionaries.get(), cfDictionary(dictionary).get());
    }
    IOHIDManagerSetDeviceMatchingMultiple(manager_.get(), dictionaries.get());
  }

  void setInputValueMatching(const PropertyDictionary& matching) override {
    IOHIDManagerSetInputValueMatching(manager_.get(), cfDictionary(matching).get());
  }

  void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) override {
    handler_ = std::move(handler);
    IOHIDManagerRegisterInputValueCallback(manager_.get(), handleInputValue, this);
  }

  void registerDeviceMatchingCallback(std::function<void()> handler) override {
    matchingHandler_ = std::move(handler);
    IOHIDManagerRegisterDeviceMatchingCallback(
        manager_.get(),
        [](void* context, IOReturn, void*, IOHIDDeviceRef) {
          static_cast<MacHidManager*>(context)->matchingHandler_();
        },
        this);
  }

  void registerDeviceRemovalCallback(std::function<void()> handler) override {
    removalHandler_ = std::move(handler);
    IOHIDManagerRegisterDeviceRemovalCallback(
        manager_.get(),
        [](void* context, IOReturn, void*, IOHIDDeviceRef) {
          static_cast<MacHidManager*>(context)->removalHandler_();
        },
        this);
  }

  std::vector<std::unique_ptr<HidDevice>> devices() override {
    const auto set = CFRef<CFSetRef>::adopt(IOHIDManagerCopyDevices(manager_.get()));
    std::vector<std::unique_ptr<HidDevice>> found;
    if (!set) return found;
    // The manager keeps its devices; the set only lists them.
    CFSetApplyFunction(
        set.get(),
        [](const void* device, void* context) {
          static_cast<std::vector<std::unique_ptr<HidDevice>>*>(context)->push_back(
              std::make_unique<MacHidDevice>(
                  static_cast<IOHIDDeviceRef>(const_cast<void*>(device))));
        },
        &found);
    return found;
  }

  void scheduleWithMainRunLoop() override {
    IOHIDManagerScheduleWithRunLoop(manager_.get(), CFRunLoopGetMain(), kCFRunLoopCommonModes);
    isScheduled_ = true;
  }

  IOReturn open() override {
    const auto result = IOHIDManagerOpen(manager_.get(), kIOHIDOptionsTypeNone);
    isOpen_ = isOpenAfter(result);
    return result;
  }

 private:
  static void handleInputValue(void* context, IOReturn /*result*/, void* sender,
                               IOHIDValueRef value) {
    if (!context) return;
    const auto element = IOHIDValueGetElement(value);
    // No header says whether the sender is the device or the manager.
    const auto source = sender ? IOHIDElementGetDevice(element) : nullptr;
    std::optional<MacHidDevice> device;
    if (source) device.emplace(source);
    static_cast<MacHidManager*>(context)->handler_({.sender = device ? &*device : nullptr,
                                                    .usagePage = IOHIDElementGetUsagePage(element),
                                                    .timestamp = IOHIDValueGetTimeStamp(value)});
  }

  const CFRef<IOHIDManagerRef> manager_ =
      CFRef<IOHIDManagerRef>::adopt(IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone));
  std::function<void(const HidInputValue&)> handler_;
  std::function<void()> matchingHandler_;
  std::function<void()> removalHandler_;
  bool isScheduled_ = false;
  bool isOpen_ = false;
};

class MacHidManagers final : public HidManagers {
 public:
  std::unique_ptr<HidManager> create() override { return std::make_unique<MacHidManager>(); }
};

}  // namespace

std::unique_ptr<HidManagers> makeHidManagers() { return std::make_unique<MacHidManagers>(); }

}  // namespace keyrow::macos
