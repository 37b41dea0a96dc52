#include "sim/machine/Applications.h"

#include <utility>

namespace keyrow::sim {

void Applications::uninstall(std::string_view bundleIdentifier) {
  const auto found = installed_.find(bundleIdentifier);
  if (found != installed_.end()) installed_.erase(found);
}

void Applications::activate(std::optional<std::string> bundleIdentifier) {
  frontmost_ = std::move(bundleIdentifier);
  activationObservers_.notify();
}

void Applications::started(std::shared_ptr<RunningProcess> process) {
  std::erase_if(processes_, [](const auto& other) { return other->isTerminated; });
  processes_.push_back(std::move(process));
}

std::vector<std::shared_ptr<RunningProcess>> Applications::running(
    std::string_view bundleIdentifier) const {
  std::vector<std::shared_ptr<RunningProcess>> found;
  for (const auto& process : processes_) {
    if (!process->isTerminated && process->bundleIdentifier == bundleIdentifier) {
      found.push_back(process);
    }
  }
  return found;
}

}  // namespace keyrow::sim
