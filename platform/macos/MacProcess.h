#pragma once

#include "platform/Process.h"

namespace keyrow::macos {

/// `Process` on `NSProcessInfo`.
class MacProcess final : public Process {
 public:
  std::int32_t processIdentifier() override;
  std::string operatingSystemVersion() override;
  Registration beginActivity(std::string_view reason) override;
};

}  // namespace keyrow::macos
