#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/HidManagers.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Makes HID managers on the machine's keyboards.
class SimulatedHidManagers final : public HidManagers {
 public:
  explicit SimulatedHidManagers(const ProcessContext& context) : context_{context} {}

  std::unique_ptr<HidManager> create() override;

  /// Whether the process would hear of an input of this keyboard on a usage page.
  bool hears(const SimulatedKeyboard& keyboard, std::uint32_t usagePage) const;

 private:
  using Hearing = std::function<bool(const SimulatedKeyboard& keyboard, std::uint32_t usagePage)>;

  const ProcessContext& context_;
  /// What each manager that there is would hear.
  std::vector<std::weak_ptr<const Hearing>> hearing_;
};

}  // namespace keyrow::sim
