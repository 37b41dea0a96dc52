#include <cstdlib>
#include <string_view>

#include "bench/KeyPath.h"
#include "platform/HidSystem.h"
#include "platform/VirtualKeys.h"

/// Lets so many key events pass, for counting what they cost: of an ordinary key, of a top-row key
/// that follows the hardware's mode, or of one whose keyboard has a mode of its own.
int main(int argc, char** argv) {
  const std::string_view kind = argc > 1 ? argv[1] : "ordinary";
  const long count = argc > 2 ? std::strtol(argv[2], nullptr, 10) : 1;
  keyrow::sim::KeyPath path;
  const bool isOrdinary = kind == "ordinary";
  if (!isOrdinary) path.store("applyFnModeToExternalFunctionKeys", true);
  if (kind == "following") path.mac.hid.setParameter(keyrow::hidFKeyModeKey, 1);
  if (kind == "own") path.storeOwnMode(keyrow::FnState::standard);
  bool isPassed = true;
  for (long event = 0; event < count; ++event) {
    isPassed = path.pass(keyrow::keyEventType::keyDown, isOrdinary ? 0 : keyrow::virtualKey::f7) &&
               isPassed;
  }
  return isPassed ? EXIT_SUCCESS : EXIT_FAILURE;
}
