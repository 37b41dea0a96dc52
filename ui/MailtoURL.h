#pragma once

#include <string>
#include <string_view>

namespace keyrow {

/// A mailto URL (RFC 6068). An empty subject or body is left out. Everything but letters,
/// digits and "-._~", and "@" in the address, is percent-encoded, line feeds and "+" too.
std::string mailtoURL(std::string_view address, std::string_view subject = {},
                      std::string_view body = {});

}  // namespace keyrow
