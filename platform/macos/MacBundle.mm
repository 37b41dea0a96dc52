#include "platform/macos/MacBundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/Conversions.h"
#include "platform/macos/ResourceBundleClass.h"

namespace keyrow::macos {

namespace {

NSBundle* applicationBundle() { return [NSBundle bundleForClass:ResourceBundleClass.class]; }

}  // namespace

std::optional<std::string> MacBundle::identifier() {
  return optionalText(applicationBundle().bundleIdentifier);
}

std::optional<PropertyValue> MacBundle::infoValue(std::string_view key) {
  const id value = [applicationBundle() objectForInfoDictionaryKey:nsString(key)];
  return propertyValue((__bridge CFTypeRef)value);
}

}  // namespace keyrow::macos
