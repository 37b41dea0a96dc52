#pragma once

#include <string_view>

namespace keyrow {

/// The application's reverse-DNS identifier. It stands in for the bundle's identifier
/// where the bundle has none, and prefixes the names that Keyrow gives to things
/// outside its process.
inline constexpr std::string_view appIdentifier = "app.keyrow.Keyrow";

}  // namespace keyrow
