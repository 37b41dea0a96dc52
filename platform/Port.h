#pragma once

namespace keyrow {

/// Base of every port and of every handle that a port hands out: used through a
/// pointer or reference, never copied. Destroying a handle releases what it holds.
class Port {
 public:
  virtual ~Port() = default;
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;

 protected:
  Port() = default;
};

}  // namespace keyrow
