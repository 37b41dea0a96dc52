#include "ui/VersionText.h"

#include <string_view>

namespace keyrow {

namespace {

/// The value when it is a string, else nothing.
std::string infoString(Bundle& bundle, std::string_view key) {
  const auto value = bundle.infoValue(key);
  const auto* text = value ? value->string() : nullptr;
  return text ? *text : std::string{};
}

}  // namespace

std::string versionText(Bundle& bundle) {
  auto version = infoString(bundle, "CFBundleShortVersionString");
  if (version.empty()) version = "0.0";
  const auto build = infoString(bundle, "CFBundleVersion");
  return build.empty() ? version : version + " (" + build + ")";
}

}  // namespace keyrow
