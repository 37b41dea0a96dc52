#pragma once

#include <cstdio>
#include <cstdlib>
#include <source_location>

namespace keyrow::fuzz {

/// Ends the fuzzer with a finding where something that must hold doesn't.
inline void require(bool holds, const char* what,
                    const std::source_location& where = std::source_location::current()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%u: this does not hold: %s\n", where.file_name(),
               static_cast<unsigned>(where.line()), what);
  std::abort();
}

}  // namespace keyrow::fuzz
