#pragma once

#include <expected>
#include <memory>
#include <optional>
#include <string>

#include "sim/scenario/Scenario.h"

namespace keyrow::desk {

/// Serves the desk to browsers on this machine, and to nobody else. The page itself is built in;
/// no file is ever opened for a request.
class Server {
 public:
  /// Where a desk is found unless told otherwise.
  static constexpr int usualPort = 8737;

  /// The scenario that its pages play; absent for a desk to try things out on.
  explicit Server(std::optional<sim::Scenario> scenario);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Takes this port, or fails where it is taken.
  std::expected<void, std::string> bind(int port);

  /// Takes whichever port is free; fails where none is.
  std::expected<void, std::string> bindToAnyPort();

  int port() const;

  /// Such as "http://127.0.0.1:8737/".
  std::string address() const;

  /// Serves until it is stopped, which another thread does.
  void serve();
  void stop();

 private:
  struct Contents;
  const std::unique_ptr<Contents> contents_;
};

}  // namespace keyrow::desk
