#pragma once

#include "platform/Files.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The files on the machine's disk.
class SimulatedFiles final : public Files {
 public:
  explicit SimulatedFiles(SimulatedMac& mac) : mac_{mac} {}

  std::string temporaryDirectory() override { return "/tmp"; }

  bool writeAtomically(const std::string& path, std::string_view contents) override {
    if (!mac_.call(PortCall::writeFile)) return false;
    mac_.files.insert_or_assign(path, std::string{contents});
    return true;
  }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
