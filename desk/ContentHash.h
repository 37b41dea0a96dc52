#pragma once

#include <string>
#include <string_view>

namespace keyrow::desk {

/// The hash by which a content security policy names an inline script or style: "sha256-" and the
/// SHA-256 of the text (FIPS 180-4) in base 64.
std::string contentHash(std::string_view text);

}  // namespace keyrow::desk
