#pragma once

#include <utf8proc.h>

#include <cstddef>
#include <string_view>

namespace keyrow::fuzz {

/// Whether the text is UTF-8 from its beginning to its end.
inline bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    utf8proc_int32_t scalar = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &scalar);
    if (length <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return true;
}

}  // namespace keyrow::fuzz
