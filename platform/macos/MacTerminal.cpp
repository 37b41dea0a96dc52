#include <unistd.h>

#include <csignal>
#include <iostream>
#include <memory>
#include <string_view>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacTerminal final : public Terminal {
 public:
  /// Writing to a pipe that nobody reads any more fails from now on, and does not end the process.
  MacTerminal() { std::signal(SIGPIPE, SIG_IGN); }

  bool print(std::string_view line) override {
    std::cout << line << std::endl;
    return std::cout.good();
  }
  void printError(std::string_view line) override { std::cerr << line << '\n'; }
  bool isInteractive() override { return isatty(STDOUT_FILENO) != 0; }
};

}  // namespace

std::unique_ptr<Terminal> makeTerminal() { return std::make_unique<MacTerminal>(); }

}  // namespace keyrow::macos
