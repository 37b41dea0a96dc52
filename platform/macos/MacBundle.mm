#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

/// Marks the bundle that carries the application's resources (`bundleForClass:`).
@interface ResourceBundleClass : NSObject
@end

@implementation ResourceBundleClass
@end

namespace keyrow::macos {

namespace {

NSBundle* applicationBundle() { return [NSBundle bundleForClass:ResourceBundleClass.class]; }

class MacBundle final : public Bundle {
 public:
  std::optional<std::string> identifier() override {
    return optionalText(applicationBundle().bundleIdentifier);
  }

  std::optional<PropertyValue> infoValue(std::string_view key) override {
    const id value = [applicationBundle() objectForInfoDictionaryKey:nsString(key)];
    return propertyValue((__bridge CFTypeRef)value);
  }

  std::optional<std::string> resourceURL(std::string_view name) override {
    return optionalText(
        [applicationBundle() URLForResource:nsString(name) withExtension:nil].absoluteString);
  }
};

}  // namespace

std::unique_ptr<Bundle> makeBundle() { return std::make_unique<MacBundle>(); }

}  // namespace keyrow::macos
