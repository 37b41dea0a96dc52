#include "sim/scenario/Language.h"

namespace keyrow::sim {

std::array<LanguagePart, 10> language() {
  return {appLines(),     modeLines(), keyLines(),   screenLines(),  machineLines(),
          processLines(), logLines(),  faultLines(), serviceLines(), toolLines()};
}

}  // namespace keyrow::sim
