#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Tells applications that are gone from those that are being updated, which are missing for a
/// while. Main thread only.
class MissingApplications {
 public:
  MissingApplications(Workspace& workspace, Clock& clock) : workspace_{workspace}, clock_{clock} {}

  /// Those of these bundle identifiers that are missing, and were so at every look for a minute.
  std::vector<std::string> goneAmong(const std::vector<std::string>& bundleIdentifiers);

 private:
  Workspace& workspace_;
  Clock& clock_;
  /// Since when (`Clock::uptime`).
  std::map<std::string, std::chrono::nanoseconds> missingSince_;
};

}  // namespace keyrow
