#include "platform/macos/MacBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

std::optional<std::string> MacBundle::identifier() {
  return optionalText(NSBundle.mainBundle.bundleIdentifier);
}

std::optional<PropertyValue> MacBundle::infoValue(std::string_view key) {
  const id value = [NSBundle.mainBundle objectForInfoDictionaryKey:nsString(key)];
  return propertyValue((__bridge CFTypeRef)value);
}

}  // namespace keyrow::macos
