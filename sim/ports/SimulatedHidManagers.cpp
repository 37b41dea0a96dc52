#include "sim/ports/SimulatedHidManagers.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "sim/ports/SimulatedHidSystem.h"

namespace keyrow::sim {

namespace {

class Device final : public HidDevice {
 public:
  Device(SimulatedMac& mac, std::shared_ptr<const SimulatedKeyboard> keyboard)
      : mac_{mac}, keyboard_{std::move(keyboard)} {}

  std::optional<std::uint64_t> registryEntryID() override {
    if (!mac_.call(PortCall::registryEntryID)) return std::nullopt;
    return keyboard_->registryID;
  }

  std::optional<PropertyValue> property(std::string_view key) override {
    if (!mac_.call(PortCall::readDeviceProperty)) return std::nullopt;
    const auto found = keyboard_->properties.find(key);
    return found == keyboard_->properties.end() ? std::nullopt : std::optional{found->second};
  }

 private:
  SimulatedMac& mac_;
  const std::shared_ptr<const SimulatedKeyboard> keyboard_;
};

using Hearing = std::function<bool(const SimulatedKeyboard& keyboard, std::uint32_t usagePage)>;

bool matches(const PropertyDictionary& matching, const PropertyDictionary& properties) {
  return std::ranges::all_of(matching, [&](const auto& wanted) {
    const auto found = properties.find(wanted.first);
    return found != properties.end() && found->second == wanted.second;
  });
}

class Manager final : public HidManager {
 public:
  explicit Manager(const ProcessContext& context)
      : mac_{context.mac},
        mainThread_{context.mainThread},
        handle_{context.mac.openHandles, "HidManager", context.processID} {}
  ~Manager() override { mac_.trace.add("close-hid-manager"); }

  void setDeviceMatching(std::span<const PropertyDictionary> matching) override {
    deviceMatching_.assign(matching.begin(), matching.end());
  }

  void setInputValueMatching(const PropertyDictionary& matching) override {
    valueMatching_ = matching;
  }

  void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) override {
    callback_ = std::move(handler);
  }

  void registerDeviceMatchingCallback(std::function<void()> handler) override {
    attached_ = std::move(handler);
  }

  void registerDeviceRemovalCallback(std::function<void()> handler) override {
    removed_ = std::move(handler);
  }

  std::vector<std::unique_ptr<HidDevice>> devices() override {
    std::vector<std::unique_ptr<HidDevice>> found;
    if (!mac_.call(PortCall::copyDevices)) return found;
    for (const auto& keyboard : mac_.keyboards.all()) {
      if (matchesDevice(*keyboard)) found.push_back(std::make_unique<Device>(mac_, keyboard));
    }
    return found;
  }

  void scheduleWithMainRunLoop() override {
    changes_ = mac_.keyboards.observeChanges([this](Keyboards::Change change) {
      mainThread_->deliver([this, weak = std::weak_ptr{alive_}, change] {
        if (weak.expired() || !isOpen_) return;
        const auto& handler = change == Keyboards::Change::attached ? attached_ : removed_;
        if (handler) handler();
      });
    });
    schedule_ = mac_.keyboards.observeInput([this](const KeyboardInput& input) {
      mainThread_->deliver([this, weak = std::weak_ptr{alive_}, input] {
        if (!weak.expired()) receive(input);
      });
    });
  }

  IOReturn open() override {
    const auto access = mac_.inputMonitoring.access();
    if (access == InputMonitoringAccess::unknown) throw WaitsForConsent{};
    if (!mac_.call(PortCall::openHidManager)) return SimulatedHidSystem::refusal;
    if (access == InputMonitoringAccess::denied) return SimulatedHidSystem::refusal;
    isOpen_ = true;
    withdrawalCount_ = mac_.inputMonitoring.withdrawalCount();
    const bool isAnyExclusive = std::ranges::any_of(mac_.keyboards.all(), [&](const auto& one) {
      return one->isExclusive && matchesDevice(*one);
    });
    return isAnyExclusive ? ioReturnExclusiveAccess : ioReturnSuccess;
  }

  std::weak_ptr<const Hearing> hearing() const { return hearing_; }

 private:
  void receive(const KeyboardInput& input) {
    if (!isListening(input.usagePage)) return;
    if (!input.keyboard) {
      callback_({nullptr, input.usagePage, input.timestamp});
      return;
    }
    if (!matchesDevice(*input.keyboard)) return;
    Device device{mac_, input.keyboard};
    callback_({&device, input.usagePage, input.timestamp});
  }

  bool isListening(std::uint32_t usagePage) const {
    return isOpen_ && callback_ && withdrawalCount_ == mac_.inputMonitoring.withdrawalCount() &&
           matches(valueMatching_, {{"UsagePage", std::int64_t{usagePage}}});
  }

  bool matchesDevice(const SimulatedKeyboard& keyboard) const {
    const PropertyDictionary properties{{"DeviceUsagePage", hidPage::genericDesktop},
                                        {"DeviceUsage", keyboard.usage}};
    return std::ranges::any_of(deviceMatching_, [&](const PropertyDictionary& matching) {
      return matches(matching, properties);
    });
  }

  SimulatedMac& mac_;
  const std::shared_ptr<MainThread> mainThread_;
  const OpenHandle handle_;
  const std::shared_ptr<const Hearing> hearing_ = std::make_shared<const Hearing>(
      [this](const SimulatedKeyboard& keyboard, std::uint32_t usagePage) {
        return isListening(usagePage) && matchesDevice(keyboard);
      });
  const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::vector<PropertyDictionary> deviceMatching_;
  PropertyDictionary valueMatching_;
  std::function<void(const HidInputValue&)> callback_;
  std::function<void()> attached_;
  std::function<void()> removed_;
  bool isOpen_ = false;
  /// How often the permission had been taken away when it was opened.
  std::uint64_t withdrawalCount_ = 0;
  Registration schedule_;
  Registration changes_;
};

}  // namespace

std::unique_ptr<HidManager> SimulatedHidManagers::create() {
  auto manager = std::make_unique<Manager>(context_);
  std::erase_if(hearing_, [](const auto& one) { return one.expired(); });
  hearing_.push_back(manager->hearing());
  return manager;
}

bool SimulatedHidManagers::hears(const SimulatedKeyboard& keyboard, std::uint32_t usagePage) const {
  return std::ranges::any_of(hearing_, [&](const auto& one) {
    const auto hearing = one.lock();
    return hearing && (*hearing)(keyboard, usagePage);
  });
}

}  // namespace keyrow::sim
