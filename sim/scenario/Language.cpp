#include "sim/scenario/Language.h"

namespace keyrow::sim {

std::array<LanguagePart, 9> language() {
  return {appLines(),     modeLines(), keyLines(),   screenLines(), machineLines(),
          processLines(), logLines(),  faultLines(), serviceLines()};
}

}  // namespace keyrow::sim
