#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// This process (`NSProcessInfo`).
class Process : public Port {
 public:
  /// `processIdentifier`.
  virtual std::int32_t processIdentifier() = 0;

  /// Whether it runs with all of the administrator's rights (`geteuid`).
  virtual bool isRoot() = 0;

  /// The version of macOS as people read it (`operatingSystemVersionString`).
  virtual std::string operatingSystemVersion() = 0;

  /// Keeps the process from being napped until the returned activity is destroyed; the Mac falls
  /// asleep as ever (`beginActivityWithOptions:reason:` with
  /// `NSActivityUserInitiatedAllowingIdleSystemSleep`). The user can see the reason.
  virtual Registration beginActivity(std::string_view reason) = 0;
};

}  // namespace keyrow
