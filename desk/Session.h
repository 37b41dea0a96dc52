#pragma once

#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "sim/scenario/Scenario.h"

namespace keyrow::desk {

/// The most lines that one session holds.
inline constexpr std::size_t maximumLineCount = 10'000;

/// What is to be done with a session's lines.
struct PlayRequest {
  /// How many of the lines that were played stay; all others are taken back.
  std::size_t kept = 0;
  /// What is played after them.
  std::vector<std::string> lines;
  /// Whether waits that follow each other become one line.
  bool joinsWaits = false;
};

/// The line as a scenario holds it.
std::string lineOf(const sim::Step& step);

/// A scenario that comes into being line by line, and the stage that it plays on. Used in one
/// thread.
class Session {
 public:
  Session();

  /// What a stage shows on which nothing was played.
  static nlohmann::json blank();

  /// Plays, and answers {"from": N, "frames": [...], "refused": null}: the frames take the place of
  /// all from the N-th on. Each holds the line, what happened, and what has changed on the stage
  /// since the frame before (RFC 6902). A line that does not parse changes nothing at all. One that
  /// cannot be carried out ends it, and leaves nothing behind. Either is "refused", with the
  /// reason.
  nlohmann::json play(const PlayRequest& request);

 private:
  void start();
  void takeBackTo(std::size_t count);
  bool isLengthening(const sim::Step& step, const PlayRequest& request) const;
  nlohmann::json frameOf(const sim::Step& step, const sim::Outcome& outcome);

  std::unique_ptr<sim::Stage> stage_;
  std::vector<sim::Step> played_;
  /// When the last line began, and what has happened since.
  std::string startedAt_;
  nlohmann::json events_;
  /// What the stage showed after the last line, and after the one before.
  nlohmann::json last_;
  nlohmann::json beforeLast_;
};

}  // namespace keyrow::desk
