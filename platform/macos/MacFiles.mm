#import <Foundation/Foundation.h>

#include <memory>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacFiles final : public Files {
 public:
  std::string temporaryDirectory() override {
    return utf8Text(NSFileManager.defaultManager.temporaryDirectory.path);
  }

  bool writeAtomically(const std::string& path, std::string_view contents) override {
    return [nsString(contents) writeToFile:nsString(path)
                                atomically:YES
                                  encoding:NSUTF8StringEncoding
                                     error:nil];
  }
};

}  // namespace

std::unique_ptr<Files> makeFiles() { return std::make_unique<MacFiles>(); }

}  // namespace keyrow::macos
