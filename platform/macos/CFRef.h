#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace keyrow::macos {

/// Owns one reference to a Core Foundation object, or nothing.
template <typename Object>
class CFRef {
 public:
  /// Takes over a reference that the caller owns: what `Create` and `Copy` return.
  static CFRef adopt(Object object) { return CFRef{object}; }

  /// Adds a reference to a borrowed object: what `Get` and constants return.
  static CFRef retain(Object object) {
    if (object) CFRetain(object);
    return CFRef{object};
  }

  CFRef(CFRef&& other) noexcept : object_{other.release()} {}
  CFRef& operator=(CFRef&& other) noexcept {
    CFRef old{std::move(*this)};
    object_ = other.release();
    return *this;
  }
  CFRef(const CFRef&) = delete;
  CFRef& operator=(const CFRef&) = delete;
  ~CFRef() {
    if (object_) CFRelease(object_);
  }

  /// The object, borrowed; null when there is none.
  Object get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Hands the reference over to the caller, who releases it.
  [[nodiscard]] Object release() { return std::exchange(object_, nullptr); }

 private:
  explicit CFRef(Object object) : object_{object} {}

  Object object_ = nullptr;
};

}  // namespace keyrow::macos
