#pragma once

#include <string>
#include <string_view>

#include "platform/Port.h"

namespace keyrow {

/// Files in the temporary directory.
class Files : public Port {
 public:
  /// The path of the temporary directory, without a slash at its end
  /// (`NSFileManager.temporaryDirectory`).
  virtual std::string temporaryDirectory() = 0;

  /// Writes a whole file as it is, or leaves it as it was; false when that failed.
  virtual bool writeAtomically(const std::string& path, std::string_view contents) = 0;
};

}  // namespace keyrow
