#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Status.h"
#include "tool/Report.h"

namespace keyrow::tool {

/// What else the doctor looks at.
struct Findings {
  /// The process identifiers of all Keyrows that run.
  std::vector<std::int64_t> processes{};
  /// The stored keys that an administrator manages.
  std::vector<std::string> managedKeys{};
};

/// Everything that can keep keys from doing what the user wants, and what to do about it: a
/// line each, the gravest first. `status` has no `running` where Keyrow does not answer.
std::vector<std::string> diagnose(const Status& status, const Surroundings& surroundings,
                                  const Findings& findings);

}  // namespace keyrow::tool
