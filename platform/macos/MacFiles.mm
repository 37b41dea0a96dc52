#include "platform/macos/MacFiles.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

std::string MacFiles::temporaryDirectory() {
  return utf8Text(NSFileManager.defaultManager.temporaryDirectory.path);
}

bool MacFiles::writeAtomically(const std::string& path, std::string_view contents) {
  return [nsString(contents) writeToFile:nsString(path)
                              atomically:YES
                                encoding:NSUTF8StringEncoding
                                   error:nil];
}

}  // namespace keyrow::macos
