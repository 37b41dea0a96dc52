#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

/// User defaults apart from everybody else's: empty at first, and gone with this object.
class ThrowAwayDefaults {
 public:
  ThrowAwayDefaults() { remove(); }
  ~ThrowAwayDefaults() { remove(); }
  ThrowAwayDefaults(const ThrowAwayDefaults&) = delete;
  ThrowAwayDefaults& operator=(const ThrowAwayDefaults&) = delete;

  std::string_view name() const { return "app.keyrow.Keyrow.mac-tests"; }

  /// One more object for the same defaults.
  NSUserDefaults* open() const {
    return [[NSUserDefaults alloc] initWithSuiteName:nsString(name())];
  }

 private:
  void remove() {
    [NSUserDefaults.standardUserDefaults removePersistentDomainForName:nsString(name())];
  }
};

}  // namespace keyrow::macos
