#include "platform/macos/MacBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

std::optional<std::string> MacBundle::identifier() {
  return optionalText(NSBundle.mainBundle.bundleIdentifier);
}

}  // namespace keyrow::macos
