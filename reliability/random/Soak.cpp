#include "reliability/random/Soak.h"

#include <rapidcheck.h>
#include <rapidcheck/detail/TestListener.h>
#include <unistd.h>

#include <chrono>
#include <iostream>

#include "reliability/random/SessionLines.h"

namespace keyrow::reliability {
namespace {

using Clock = std::chrono::steady_clock;

/// Tells on a terminal how far it is.
class Progress {
 public:
  explicit Progress(std::uint64_t target) : target_{target} {}

  void add(const PlayedLines& lines) {
    done_ += lines.count;
    promised_ += lines.promisedCount;
    if (!isTerminal_ || Clock::now() - shown_ < std::chrono::milliseconds{200}) return;
    shown_ = Clock::now();
    std::cerr << '\r' << done_ << " of " << target_ << " steps, " << rate() << " a second "
              << std::flush;
  }

  void finish() const {
    if (isTerminal_) std::cerr << "\r\033[K";
  }

  /// In percent.
  std::uint64_t promisedShare() const { return promised_ * 100 / done_; }
  std::uint64_t done() const { return done_; }
  std::uint64_t rate() const {
    const std::chrono::duration<double> elapsed = Clock::now() - start_;
    return static_cast<std::uint64_t>(static_cast<double>(done_) / elapsed.count());
  }

 private:
  const std::uint64_t target_;
  const bool isTerminal_ = isatty(STDERR_FILENO) != 0;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point shown_ = start_;
  std::uint64_t done_ = 0;
  std::uint64_t promised_ = 0;
};

/// Hears of everything, and tells nobody.
class SilentListener final : public rc::detail::TestListener {
 public:
  void onTestCaseFinished(const rc::detail::CaseDescription& /*description*/) override {}
  void onShrinkTried(const rc::detail::CaseDescription& /*shrink*/, bool /*accepted*/) override {}
  void onTestFinished(const rc::detail::TestMetadata& /*metadata*/,
                      const rc::detail::TestResult& /*result*/) override {}
};

constexpr int sessionsPerBatch = 200;

}  // namespace

bool soak(std::uint64_t steps, std::uint64_t seed) {
  Progress progress{steps};
  SilentListener listener;
  const auto property = rc::detail::toProperty([&progress] { progress.add(playRandomSession()); });
  std::uint64_t sessions = 0;
  for (auto batch = seed; progress.done() < steps; ++batch) {
    // Short sessions first, up to lists of 100 lines; now and then up to 500.
    rc::detail::TestParams params;
    params.seed = batch;
    params.maxSuccess = sessionsPerBatch;
    if (batch % 8 == 0) params.maxSize = 500;
    const auto result = rc::detail::checkProperty(property, {}, params, listener, {});
    if (!result.is<rc::detail::SuccessResult>()) {
      progress.finish();
      rc::detail::printResultMessage(result, std::cout);
      std::cout << "\nAfter " << progress.done() << " steps, with seed " << batch
                << ". The same again: script/soak 1 " << batch << '\n';
      return false;
    }
    sessions += sessionsPerBatch;
  }
  progress.finish();
  std::cout << progress.done() << " steps in " << sessions << " sessions from seed " << seed << ", "
            << progress.promisedShare() << " % of them with a chosen mode to find, "
            << "no promise broken (" << progress.rate() << " steps a second).\n";
  return true;
}

}  // namespace keyrow::reliability
