#include <charconv>
#include <cstdint>
#include <iostream>
#include <random>
#include <string_view>

#include "reliability/random/Soak.h"

namespace {

/// 0 for what is no number, or none above 0.
std::uint64_t numberOf(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc{} && end == text.data() + text.size() ? number : 0;
}

}  // namespace

int main(int argc, char** argv) {
  const auto steps = argc > 1 ? numberOf(argv[1]) : 0;
  const auto seed = argc > 2 ? numberOf(argv[2]) : std::uint64_t{std::random_device{}()} + 1;
  if (argc > 3 || steps == 0 || seed == 0) {
    std::cerr << "usage: keyrow-soak STEPS [SEED]\n";
    return 2;
  }
  return keyrow::reliability::soak(steps, seed) ? 0 : 1;
}
