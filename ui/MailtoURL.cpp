#include "ui/MailtoURL.h"

#include <utility>

namespace keyrow {

namespace {

bool isUnreserved(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
         std::string_view{"-._~"}.find(c) != std::string_view::npos;
}

std::string percentEncoded(std::string_view text, std::string_view alsoAllowed = {}) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (isUnreserved(c) || alsoAllowed.find(c) != std::string_view::npos) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded += '%';
    encoded += digits[byte >> 4];
    encoded += digits[byte & 0xF];
  }
  return encoded;
}

}  // namespace

std::string mailtoURL(std::string_view address, std::string_view subject, std::string_view body) {
  auto url = "mailto:" + percentEncoded(address, "@");
  char separator = '?';
  for (const auto& [name, value] : {std::pair{"subject=", subject}, std::pair{"body=", body}}) {
    if (value.empty()) continue;
    url += std::exchange(separator, '&') + (name + percentEncoded(value));
  }
  return url;
}

}  // namespace keyrow
