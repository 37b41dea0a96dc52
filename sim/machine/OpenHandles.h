#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace keyrow::sim {

/// Counts the system's objects that are held at the moment, by kind and process. Safe
/// to use from any thread.
class OpenHandles {
 public:
  using ProcessID = int;

  void opened(const std::string& kind, ProcessID process);
  void closed(const std::string& kind, ProcessID process);

  /// How many of this kind are held, by all processes together.
  int count(const std::string& kind) const;

  /// What is held, as kind, process and count; nothing that is no longer held.
  std::map<std::pair<std::string, ProcessID>, int> all() const;

 private:
  /// Guards `counts`.
  mutable std::mutex mutex_;
  std::map<std::pair<std::string, ProcessID>, int> counts_;
};

/// Counts as one held object for as long as it lives.
class OpenHandle {
 public:
  OpenHandle(OpenHandles& handles, std::string kind, OpenHandles::ProcessID process);
  ~OpenHandle();
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;

 private:
  OpenHandles& handles_;
  const std::string kind_;
  const OpenHandles::ProcessID process_;
};

}  // namespace keyrow::sim
