#include "sim/ports/SimulatedHidManagers.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "sim/ports/SimulatedHidSystem.h"

namespace keyrow::sim {

namespace {

constexpr std::int64_t genericDesktopPage = 1;

class Device final : public HidDevice {
 public:
  Device(SimulatedMac& mac, std::shared_ptr<const SimulatedKeyboard> keyboard)
      : mac_{mac}, keyboard_{std::move(keyboard)} {}

  std::optional<std::uint64_t> registryEntryID() override {
    if (mac_.strikes(PortCall::registryEntryID)) return std::nullopt;
    return keyboard_->registryID;
  }

  std::optional<PropertyValue> property(std::string_view key) override {
    if (mac_.strikes(PortCall::readDeviceProperty)) return std::nullopt;
    const auto found = keyboard_->properties.find(key);
    return found == keyboard_->properties.end() ? std::nullopt : std::optional{found->second};
  }

 private:
  SimulatedMac& mac_;
  const std::shared_ptr<const SimulatedKeyboard> keyboard_;
};

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
        mainThread{context.mainThread},
        handle{context.mac.openHandles, "HidManager", context.processID} {}
  ~Manager() override { mac_.trace.add("close-hid-manager"); }

  void setDeviceMatching(std::span<const PropertyDictionary> matching) override {
    deviceMatching.assign(matching.begin(), matching.end());
  }

  void setInputValueMatching(const PropertyDictionary& matching) override {
    valueMatching = matching;
  }

  void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) override {
    callback = std::move(handler);
  }

  void registerDeviceMatchingCallback(std::function<void()> handler) override {
    attached = std::move(handler);
  }

  void registerDeviceRemovalCallback(std::function<void()> handler) override {
    removed = std::move(handler);
  }

  std::vector<std::unique_ptr<HidDevice>> devices() override {
    std::vector<std::unique_ptr<HidDevice>> found;
    if (mac_.strikes(PortCall::copyDevices)) return found;
    for (const auto& keyboard : mac_.keyboards.all()) {
      if (matchesDevice(*keyboard)) found.push_back(std::make_unique<Device>(mac_, keyboard));
    }
    return found;
  }

  void scheduleWithMainRunLoop() override {
    changes = mac_.keyboards.observeChanges([this](Keyboards::Change change) {
      mainThread->deliver([this, weak = std::weak_ptr{alive}, change] {
        if (weak.expired() || !isOpen) return;
        const auto& handler = change == Keyboards::Change::attached ? attached : removed;
        if (handler) handler();
      });
    });
    schedule = mac_.keyboards.observeInput([this](const KeyboardInput& input) {
      mainThread->deliver([this, weak = std::weak_ptr{alive}, input] {
        if (!weak.expired()) receive(input);
      });
    });
  }

  IOReturn open() override {
    if (mac_.strikes(PortCall::openHidManager)) return SimulatedHidSystem::refusal;
    isOpen = true;
    return ioReturnSuccess;
  }

 private:
  void receive(const KeyboardInput& input) {
    if (!isOpen || !callback) return;
    if (!matches(valueMatching, {{"UsagePage", std::int64_t{input.usagePage}}})) return;
    if (!input.keyboard) {
      callback({nullptr, input.usagePage, input.timestamp});
      return;
    }
    if (!matchesDevice(*input.keyboard)) return;
    Device device{mac_, input.keyboard};
    callback({&device, input.usagePage, input.timestamp});
  }

  bool matchesDevice(const SimulatedKeyboard& keyboard) const {
    const PropertyDictionary properties{{"DeviceUsagePage", genericDesktopPage},
                                        {"DeviceUsage", keyboard.usage}};
    return std::ranges::any_of(deviceMatching, [&](const PropertyDictionary& matching) {
      return matches(matching, properties);
    });
  }

  SimulatedMac& mac_;
  const std::shared_ptr<MainThread> mainThread;
  const OpenHandle handle;
  const std::shared_ptr<bool> alive = std::make_shared<bool>(true);
  std::vector<PropertyDictionary> deviceMatching;
  PropertyDictionary valueMatching;
  std::function<void(const HidInputValue&)> callback;
  std::function<void()> attached;
  std::function<void()> removed;
  bool isOpen = false;
  Registration schedule;
  Registration changes;
};

}  // namespace

std::unique_ptr<HidManager> SimulatedHidManagers::create() {
  return std::make_unique<Manager>(context_);
}

}  // namespace keyrow::sim
