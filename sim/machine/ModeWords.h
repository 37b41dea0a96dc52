#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/FnState.h"

namespace keyrow::sim {

/// The word for a mode in scenarios: "special" or "standard", and "none" where there is none.
inline std::string modeWord(std::optional<FnState> mode) {
  if (!mode) return "none";
  return *mode == FnState::standard ? "standard" : "special";
}

/// The mode that scenarios call so; absent for all else.
inline std::optional<FnState> modeOfWord(std::string_view word) {
  if (word == "special") return FnState::special;
  if (word == "standard") return FnState::standard;
  return std::nullopt;
}

}  // namespace keyrow::sim
