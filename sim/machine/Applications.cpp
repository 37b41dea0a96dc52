#include "sim/machine/Applications.h"

#include <utility>

namespace keyrow::sim {

void Applications::install(std::string bundleIdentifier, bool isElsewhere) {
  if (isElsewhere) {
    elsewhere_.insert(bundleIdentifier);
  } else {
    elsewhere_.erase(bundleIdentifier);
  }
  installed_.insert(std::move(bundleIdentifier));
}

void Applications::uninstall(std::string_view bundleIdentifier) {
  const auto found = installed_.find(bundleIdentifier);
  if (found != installed_.end()) installed_.erase(found);
}

void Applications::activate(std::optional<std::string> bundleIdentifier) {
  frontmost_ = std::move(bundleIdentifier);
  isFrontmostUnnamed_ = false;
  if (frontmost_) {
    std::erase(recent_, *frontmost_);
    recent_.push_back(*frontmost_);
  }
  activationObservers_.notify();
}

void Applications::activateUnnamed() {
  frontmost_.reset();
  isFrontmostUnnamed_ = true;
  activationObservers_.notify();
}

std::string Applications::nameOfFrontmost() const {
  if (isFrontmostUnnamed_) return "an application without an identifier";
  return frontmost_.value_or("nobody");
}

void Applications::ended(std::string_view bundleIdentifier) {
  if (running(bundleIdentifier).empty()) stepBack(bundleIdentifier);
}

void Applications::stepBack(std::string_view bundleIdentifier) {
  std::erase(recent_, bundleIdentifier);
  if (frontmost_ != bundleIdentifier) return;
  activate(recent_.empty() ? std::nullopt : std::optional{recent_.back()});
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
