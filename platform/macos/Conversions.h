#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyValue.h"
#include "platform/macos/CFRef.h"

#ifdef __OBJC__
#import <Foundation/Foundation.h>
#endif

namespace keyrow::macos {

/// The string in UTF-8. Half a surrogate pair, for which UTF-8 has no form, becomes U+FFFD.
std::string utf8Text(CFStringRef string);

/// The text as a string, never null: one that is not UTF-8 is read byte by byte, as Latin-1.
CFRef<CFStringRef> cfString(std::string_view text);

/// The property-list object with that value, never null.
CFRef<CFTypeRef> cfObject(const PropertyValue& value);
CFRef<CFDictionaryRef> cfDictionary(const PropertyDictionary& dictionary);

/// The value of a property-list object; absent for null and for an object of any other
/// type than those of `PropertyValue`. A dictionary leaves out such objects, and keys
/// that are not strings.
std::optional<PropertyValue> propertyValue(CFTypeRef object);

/// The value of one entry of a dictionary, and nothing else of it; absent when the object is null
/// or no dictionary, and when it has no such entry.
std::optional<PropertyValue> dictionaryEntry(CFTypeRef object, std::string_view key);

#ifdef __OBJC__

/// The string in UTF-8; empty for nil.
inline std::string utf8Text(NSString* string) {
  return string ? utf8Text((__bridge CFStringRef)string) : std::string{};
}

/// The string in UTF-8; absent for nil.
inline std::optional<std::string> optionalText(NSString* string) {
  return string ? std::optional{utf8Text(string)} : std::nullopt;
}

/// As `cfString`; never nil.
inline NSString* nsString(std::string_view text) {
  return (__bridge_transfer NSString*)cfString(text).release();
}

#endif

}  // namespace keyrow::macos
