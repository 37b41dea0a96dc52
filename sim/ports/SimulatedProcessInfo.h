#pragma once

#include "platform/Process.h"
#include "sim/machine/OpenHandles.h"

namespace keyrow::sim {

/// What a process knows about itself.
class SimulatedProcessInfo final : public Process {
 public:
  explicit SimulatedProcessInfo(OpenHandles::ProcessID processID) : processID_{processID} {}

  std::int32_t processIdentifier() override { return processID_; }
  std::string operatingSystemVersion() override { return "Version 14.2 (Build 23C64)"; }

 private:
  const OpenHandles::ProcessID processID_;
};

}  // namespace keyrow::sim
