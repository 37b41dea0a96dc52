#include <cstdlib>

#include "bench/KeyPath.h"

/// Lets so many ordinary key events pass, for counting what they cost.
int main(int argc, char** argv) {
  const long count = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1;
  keyrow::sim::KeyPath path;
  bool isPassed = true;
  for (long event = 0; event < count; ++event) {
    isPassed = path.pass(keyrow::keyEventType::keyDown, 0) && isPassed;
  }
  return isPassed ? EXIT_SUCCESS : EXIT_FAILURE;
}
