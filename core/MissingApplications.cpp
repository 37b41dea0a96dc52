#include "core/MissingApplications.h"

#include <utility>

namespace keyrow {

std::vector<std::string> MissingApplications::goneAmong(
    const std::vector<std::string>& bundleIdentifiers) {
  constexpr std::chrono::minutes updateTime{1};
  const auto now = clock_.uptime();
  std::vector<std::string> gone;
  std::map<std::string, std::chrono::nanoseconds> missing;
  for (const auto& identifier : bundleIdentifiers) {
    if (workspace_.isApplicationInstalled(identifier)) continue;
    const auto found = missingSince_.find(identifier);
    const auto since = found == missingSince_.end() ? now : found->second;
    if (now - since >= updateTime) {
      gone.push_back(identifier);
    } else {
      missing.emplace(identifier, since);
    }
  }
  missingSince_ = std::move(missing);
  return gone;
}

}  // namespace keyrow
