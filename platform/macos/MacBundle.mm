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
  explicit MacBundle(NSBundle* bundle) : bundle_{bundle} {}

  std::optional<std::string> identifier() override {
    return optionalText(bundle_.bundleIdentifier);
  }

  std::optional<PropertyValue> infoValue(std::string_view key) override {
    const id value = [bundle_ objectForInfoDictionaryKey:nsString(key)];
    return propertyValue((__bridge CFTypeRef)value);
  }

  std::optional<std::string> resourceURL(std::string_view name) override {
    return optionalText([bundle_ URLForResource:nsString(name) withExtension:nil].absoluteString);
  }

 private:
  /// Nil where there is none, which then has nothing.
  NSBundle* const bundle_;
};

}  // namespace

std::unique_ptr<Bundle> makeBundle() { return std::make_unique<MacBundle>(applicationBundle()); }

std::unique_ptr<Bundle> makeBundle(std::string_view path) {
  return std::make_unique<MacBundle>([NSBundle bundleWithPath:nsString(path)]);
}

}  // namespace keyrow::macos
