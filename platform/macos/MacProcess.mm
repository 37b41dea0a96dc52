#include "platform/macos/MacProcess.h"

#import <Foundation/Foundation.h>

namespace keyrow::macos {

std::int32_t MacProcess::processIdentifier() { return NSProcessInfo.processInfo.processIdentifier; }

}  // namespace keyrow::macos
