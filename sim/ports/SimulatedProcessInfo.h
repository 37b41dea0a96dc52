#pragma once

#include <memory>

#include "platform/Process.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// What a process knows about itself.
class SimulatedProcessInfo final : public Process {
 public:
  SimulatedProcessInfo(SimulatedMac& mac, OpenHandles::ProcessID processID, bool isRoot = false)
      : mac_{mac}, processID_{processID}, isRoot_{isRoot} {}

  std::int32_t processIdentifier() override { return processID_; }
  bool isRoot() override { return isRoot_; }
  std::string operatingSystemVersion() override { return "Version 14.2 (Build 23C64)"; }
  Registration beginActivity(std::string_view /*reason*/) override {
    return Registration{
        [held = std::make_shared<OpenHandle>(mac_.openHandles, "activity", processID_)] {}};
  }

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID processID_;
  const bool isRoot_;
};

}  // namespace keyrow::sim
