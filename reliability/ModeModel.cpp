#include "reliability/ModeModel.h"

#include "sim/machine/ModeWords.h"

namespace keyrow::reliability {

std::string text(const Modes& modes) {
  auto result = "hardware " + sim::modeWord(modes.hardware) + ", preference " +
                sim::modeWord(modes.preference) + ", global " + sim::modeWord(modes.global) +
                ", shown " + sim::modeWord(modes.shown) +
                (modes.isLocal ? ", local scope" : ", global scope") + ", overrides";
  if (modes.overrides.empty()) result += " none";
  for (const auto& [app, mode] : modes.overrides) result += " " + app + "=" + sim::modeWord(mode);
  return result;
}

}  // namespace keyrow::reliability
