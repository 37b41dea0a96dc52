#include "platform/macos/Conversions.h"

#include <cstddef>
#include <cstdint>
#include <variant>

namespace keyrow::macos {

namespace {

/// A UTF-16 unit takes at most three bytes; a pair of them takes four.
constexpr CFIndex utf8BytesPerUnit = 3;

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

CFRef<CFStringRef> cfString(std::string_view text, CFStringEncoding encoding) {
  return CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
      static_cast<CFIndex>(text.size()), encoding, /*isExternalRepresentation=*/false));
}

PropertyValue numberValue(CFNumberRef number) {
  if (CFNumberIsFloatType(number)) {
    double value = 0;
    CFNumberGetValue(number, kCFNumberDoubleType, &value);
    return value;
  }
  std::int64_t value = 0;
  CFNumberGetValue(number, kCFNumberSInt64Type, &value);
  return value;
}

PropertyDictionary dictionaryValue(CFDictionaryRef dictionary) {
  PropertyDictionary values;
  CFDictionaryApplyFunction(
      dictionary,
      [](const void* key, const void* object, void* context) {
        if (CFGetTypeID(key) != CFStringGetTypeID()) return;
        auto value = propertyValue(object);
        if (!value) return;
        static_cast<PropertyDictionary*>(context)->insert_or_assign(
            utf8Text(static_cast<CFStringRef>(key)), *std::move(value));
      },
      &values);
  return values;
}

}  // namespace

std::string utf8Text(CFStringRef string) {
  const auto length = CFStringGetLength(string);
  std::string text(static_cast<std::size_t>(length * utf8BytesPerUnit), '\0');
  std::size_t size = 0;
  for (CFIndex position = 0; position < length;) {
    CFIndex byteCount = 0;
    position += CFStringGetBytes(
        string, CFRangeMake(position, length - position), kCFStringEncodingUTF8, /*lossByte=*/0,
        /*isExternalRepresentation=*/false, reinterpret_cast<UInt8*>(text.data() + size),
        static_cast<CFIndex>(text.size() - size), &byteCount);
    size += static_cast<std::size_t>(byteCount);
    if (position == length) break;

    // The conversion stops at half a surrogate pair, even when it is told to replace it.
    text.replace(size, replacementCharacter.size(), replacementCharacter);
    size += replacementCharacter.size();
    ++position;
  }
  text.resize(size);
  return text;
}

CFRef<CFStringRef> cfString(std::string_view text) {
  auto string = cfString(text, kCFStringEncodingUTF8);
  return string ? std::move(string) : cfString(text, kCFStringEncodingISOLatin1);
}

CFRef<CFTypeRef> cfObject(const PropertyValue& value) {
  if (const auto* boolean = value.boolean()) {
    return CFRef<CFTypeRef>::retain(*boolean ? kCFBooleanTrue : kCFBooleanFalse);
  }
  if (const auto* integer = value.integer()) {
    return CFRef<CFTypeRef>::adopt(
        CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, integer));
  }
  if (const auto* floatingPoint = value.floatingPoint()) {
    return CFRef<CFTypeRef>::adopt(
        CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, floatingPoint));
  }
  if (const auto* string = value.string()) {
    return CFRef<CFTypeRef>::adopt(cfString(*string).release());
  }
  return CFRef<CFTypeRef>::adopt(cfDictionary(*value.dictionary()).release());
}

CFRef<CFDictionaryRef> cfDictionary(const PropertyDictionary& dictionary) {
  auto* const result = CFDictionaryCreateMutable(
      kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  for (const auto& [key, value] : dictionary) {
    CFDictionarySetValue(result, cfString(key).get(), cfObject(value).get());
  }
  return CFRef<CFDictionaryRef>::adopt(result);
}

std::optional<PropertyValue> propertyValue(CFTypeRef object) {
  if (!object) return std::nullopt;
  // A Boolean is not a number here, although Foundation makes it pass for one.
  const auto type = CFGetTypeID(object);
  if (type == CFBooleanGetTypeID()) {
    return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
  }
  if (type == CFNumberGetTypeID()) return numberValue(static_cast<CFNumberRef>(object));
  if (type == CFStringGetTypeID()) return utf8Text(static_cast<CFStringRef>(object));
  if (type == CFDictionaryGetTypeID()) {
    return dictionaryValue(static_cast<CFDictionaryRef>(object));
  }
  return std::nullopt;
}

std::optional<PropertyValue> dictionaryEntry(CFTypeRef object, std::string_view key) {
  if (!object || CFGetTypeID(object) != CFDictionaryGetTypeID()) return std::nullopt;
  return propertyValue(
      CFDictionaryGetValue(static_cast<CFDictionaryRef>(object), cfString(key).get()));
}

}  // namespace keyrow::macos
