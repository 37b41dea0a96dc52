#pragma once

#include "platform/Files.h"

namespace keyrow::macos {

/// `Files` on `NSFileManager` and `NSString`.
class MacFiles final : public Files {
 public:
  std::string temporaryDirectory() override;
  bool writeAtomically(const std::string& path, std::string_view contents) override;
};

}  // namespace keyrow::macos
