#pragma once

#include <IOKit/IOKitLib.h>

#include <utility>

namespace keyrow::macos {

/// Owns one reference to an object of the I/O Registry, or nothing.
class IOObject {
 public:
  /// Takes over a reference that the caller owns.
  static IOObject adopt(io_object_t object) { return IOObject{object}; }

  IOObject(IOObject&& other) noexcept : object_{std::exchange(other.object_, IO_OBJECT_NULL)} {}
  IOObject& operator=(IOObject&& other) noexcept {
    IOObject old{std::move(*this)};
    object_ = std::exchange(other.object_, IO_OBJECT_NULL);
    return *this;
  }
  IOObject(const IOObject&) = delete;
  IOObject& operator=(const IOObject&) = delete;
  ~IOObject() {
    if (object_) IOObjectRelease(object_);
  }

  /// The object, borrowed; `IO_OBJECT_NULL` when there is none.
  io_object_t get() const { return object_; }
  explicit operator bool() const { return object_ != IO_OBJECT_NULL; }

 private:
  explicit IOObject(io_object_t object) : object_{object} {}

  io_object_t object_ = IO_OBJECT_NULL;
};

}  // namespace keyrow::macos
