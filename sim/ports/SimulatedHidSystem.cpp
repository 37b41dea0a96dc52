#include "sim/ports/SimulatedHidSystem.h"

namespace keyrow::sim {

namespace {

class Connection final : public HidConnection {
 public:
  Connection(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, handle_{mac.openHandles, "HidConnection", process} {}

  IOReturn setParameter(std::string_view key, const PropertyValue& value) override {
    if (!mac_.call(PortCall::setHidParameter)) return SimulatedHidSystem::refusal;
    mac_.hid.noteWrittenValue(value);
    mac_.hid.setParameter(key, value);
    return ioReturnSuccess;
  }

  std::expected<bool, IOReturn> modifierLockState(std::int32_t selector) override {
    if (!mac_.call(PortCall::readModifierLockState) || selector != capsLockState) {
      return std::unexpected{SimulatedHidSystem::refusal};
    }
    return mac_.isCapsLockOn;
  }

 private:
  SimulatedMac& mac_;
  const OpenHandle handle_;
};

class Service final : public HidService {
 public:
  Service(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, process_{process}, handle_{mac.openHandles, "HidService", process} {}

  std::optional<PropertyValue> entry(std::string_view property, std::string_view key) override {
    if (!mac_.call(PortCall::readServiceProperty)) return std::nullopt;
    if (property != hidParametersKey) return std::nullopt;
    return mac_.hid.parameter(key);
  }

  std::expected<std::unique_ptr<HidConnection>, IOReturn> open(
      std::uint32_t connectionType) override {
    if (!mac_.call(PortCall::openConnection)) {
      return std::unexpected{SimulatedHidSystem::refusal};
    }
    if (connectionType != hidParamConnectType) {
      return std::unexpected{SimulatedHidSystem::refusal};
    }
    return std::make_unique<Connection>(mac_, process_);
  }

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
  const OpenHandle handle_;
};

}  // namespace

std::unique_ptr<HidService> SimulatedHidSystem::matchingService(std::string_view className) {
  if (!mac_.call(PortCall::findService) || className != hidSystemClass) return nullptr;
  return std::make_unique<Service>(mac_, process_);
}

}  // namespace keyrow::sim
