#include "desk/Stages.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <nlohmann/json.hpp>
#include <random>
#include <thread>
#include <utility>

namespace keyrow::desk {

namespace {

/// 128 bits that nobody can guess, in hexadecimal digits.
std::string randomName() {
  constexpr std::string_view digits = "0123456789abcdef";
  std::random_device random;
  std::string name;
  while (name.size() < 32) name += digits[random() % digits.size()];
  return name;
}

}  // namespace

/// A session and its thread: it is made, used and taken apart there.
class Stages::Worker {
 public:
  Worker() : thread_{[this] { run(); }} {}
  ~Worker() {
    {
      const std::scoped_lock guard{mutex_};
      isEnding_ = true;
    }
    changed_.notify_one();
    thread_.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  nlohmann::json play(const PlayRequest& request) {
    std::promise<nlohmann::json> answer;
    auto coming = answer.get_future();
    {
      const std::scoped_lock guard{mutex_};
      waiting_.push_back({&request, &answer});
    }
    changed_.notify_one();
    return coming.get();
  }

 private:
  struct Job {
    const PlayRequest* request;
    std::promise<nlohmann::json>* answer;
  };

  void run() {
    Session session;
    while (const auto job = nextJob()) job->answer->set_value(session.play(*job->request));
  }

  /// Waits for it; absent at the end.
  std::optional<Job> nextJob() {
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty()) return std::nullopt;
    const auto job = waiting_.front();
    waiting_.pop_front();
    return job;
  }

  /// Guards the fields below, up to the thread.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> waiting_;
  bool isEnding_ = false;
  std::thread thread_;
};

Stages::~Stages() = default;

std::string Stages::open() {
  auto name = randomName();
  auto worker = std::make_shared<Worker>();
  // It ends outside of the lock.
  std::shared_ptr<Worker> oldest;
  const std::scoped_lock guard{mutex_};
  if (workers_.size() >= limit_) {
    oldest = std::move(workers_.back().second);
    workers_.pop_back();
  }
  workers_.emplace_front(name, std::move(worker));
  return name;
}

std::optional<nlohmann::json> Stages::play(const std::string& name, const PlayRequest& request) {
  std::shared_ptr<Worker> worker;
  {
    const std::scoped_lock guard{mutex_};
    const auto found = std::ranges::find(workers_, name, [](const auto& one) { return one.first; });
    if (found == workers_.end()) return std::nullopt;
    worker = found->second;
    workers_.splice(workers_.begin(), workers_, found);
  }
  return worker->play(request);
}

void Stages::close(const std::string& name) {
  std::shared_ptr<Worker> worker;
  const std::scoped_lock guard{mutex_};
  const auto found = std::ranges::find(workers_, name, [](const auto& one) { return one.first; });
  if (found == workers_.end()) return;
  worker = std::move(found->second);
  workers_.erase(found);
}

std::size_t Stages::count() const {
  const std::scoped_lock guard{mutex_};
  return workers_.size();
}

}  // namespace keyrow::desk
