#pragma once

#include <string_view>

#include "platform/Port.h"

namespace keyrow {

/// Where a command-line program writes.
class Terminal : public Port {
 public:
  /// Writes a line to the standard output, at once; false where it cannot be written.
  virtual bool print(std::string_view line) = 0;

  /// Writes a line to the standard error.
  virtual void printError(std::string_view line) = 0;

  /// Whether the standard output is read by a person (`isatty`).
  virtual bool isInteractive() = 0;
};

}  // namespace keyrow
