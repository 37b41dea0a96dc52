#include "sim/machine/OpenHandles.h"

namespace keyrow::sim {

void OpenHandles::opened(const std::string& kind, ProcessID process) {
  const std::scoped_lock guard{mutex_};
  ++counts_[{kind, process}];
}

void OpenHandles::closed(const std::string& kind, ProcessID process) {
  const std::scoped_lock guard{mutex_};
  const auto entry = counts_.find({kind, process});
  if (--entry->second == 0) counts_.erase(entry);
}

int OpenHandles::count(const std::string& kind) const {
  const std::scoped_lock guard{mutex_};
  int total = 0;
  for (const auto& [key, count] : counts_) {
    if (key.first == kind) total += count;
  }
  return total;
}

std::map<std::pair<std::string, OpenHandles::ProcessID>, int> OpenHandles::all() const {
  const std::scoped_lock guard{mutex_};
  return counts_;
}

OpenHandle::OpenHandle(OpenHandles& handles, std::string kind, OpenHandles::ProcessID process)
    : handles_{handles}, kind_{std::move(kind)}, process_{process} {
  handles_.opened(kind_, process_);
}

OpenHandle::~OpenHandle() { handles_.closed(kind_, process_); }

}  // namespace keyrow::sim
