#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "desk/Session.h"

namespace keyrow::desk {

/// The sessions of the pages that are open, each in a thread of its own. At the limit the one that
/// was unused for the longest goes; its page replays. Safe to use from any thread.
class Stages {
 public:
  explicit Stages(std::size_t limit) : limit_{limit} {}
  ~Stages();
  Stages(const Stages&) = delete;
  Stages& operator=(const Stages&) = delete;

  /// Starts a session; gives its name, which nobody can guess.
  std::string open();

  /// Plays on the session of that name; absent when there is none.
  std::optional<nlohmann::json> play(const std::string& name, const PlayRequest& request);

  void close(const std::string& name);

  std::size_t count() const;

 private:
  class Worker;

  const std::size_t limit_;
  /// Guards the field below.
  mutable std::mutex mutex_;
  /// The one that was used last is the first.
  std::list<std::pair<std::string, std::shared_ptr<Worker>>> workers_;
};

}  // namespace keyrow::desk
