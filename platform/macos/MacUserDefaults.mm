#include "platform/macos/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

std::optional<PropertyValue> MacUserDefaults::object(std::string_view key) {
  const id object = [NSUserDefaults.standardUserDefaults objectForKey:nsString(key)];
  return propertyValue((__bridge CFTypeRef)object);
}

void MacUserDefaults::setObject(std::string_view key, const PropertyValue& value) {
  const id object = (__bridge_transfer id)cfObject(value).release();
  [NSUserDefaults.standardUserDefaults setObject:object forKey:nsString(key)];
}

void MacUserDefaults::removeObject(std::string_view key) {
  [NSUserDefaults.standardUserDefaults removeObjectForKey:nsString(key)];
}

}  // namespace keyrow::macos
