#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "desk/Film.h"
#include "desk/Server.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::desk {
namespace {

constexpr std::string_view usage =
    "usage: keyrow-desk [FILE] [--port N]\n"
    "       keyrow-desk --film FILE -o OUT.html\n"
    "       keyrow-desk --gallery FOLDER [SCENARIOS]\n"
    "\n"
    "Serves the simulated Mac to a browser on this machine until Ctrl-C: to try things out\n"
    "on, or to play a scenario. Or makes a film of a scenario, or of all in a folder.\n"
    "\n"
    "Exit status: 0, or 2 when that cannot be done.\n";

constexpr int statusCannot = 2;

struct Options {
  std::optional<std::string> file;
  std::optional<int> port;
  std::optional<std::string> film;
  std::optional<std::string> output;
  std::optional<std::string> gallery;
};

int cannot(const std::string& why) {
  std::cerr << "keyrow-desk: " << why << '\n';
  return statusCannot;
}

std::optional<int> portNumber(const std::string& text) {
  constexpr int largest = 65535;
  constexpr std::size_t mostDigits = 5;
  if (text.empty() || text.size() > mostDigits) return std::nullopt;
  int number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    number = 10 * number + (c - '0');
  }
  return number >= 1 && number <= largest ? std::optional{number} : std::nullopt;
}

/// Absent, once it was said, when they make no sense.
std::optional<Options> parse(std::span<char*> arguments) {
  Options options;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string argument = arguments[index];
    const auto value = [&]() -> std::optional<std::string> {
      if (index + 1 >= arguments.size()) return std::nullopt;
      return std::string{arguments[++index]};
    };
    if (argument == "--port") {
      const auto number = value();
      options.port = number ? portNumber(*number) : std::nullopt;
      if (!options.port) {
        cannot("--port needs a number from 1 to 65535");
        return std::nullopt;
      }
    } else if (argument == "--film" || argument == "-o" || argument == "--gallery") {
      auto& place = argument == "--film" ? options.film
                    : argument == "-o"   ? options.output
                                         : options.gallery;
      place = value();
      if (!place) {
        cannot(argument + " needs a name");
        return std::nullopt;
      }
    } else if (argument.starts_with("-") || options.file) {
      std::cerr << usage;
      return std::nullopt;
    } else {
      options.file = argument;
    }
  }
  if (options.film.has_value() != options.output.has_value()) {
    cannot("--film FILE and -o OUT.html belong together");
    return std::nullopt;
  }
  return options;
}

/// Absent, once it was said why, when it cannot be read.
std::optional<sim::Scenario> read(const std::string& path) {
  auto scenario = sim::readScenario(path);
  if (scenario) return std::move(*scenario);
  sim::printErrors(std::cerr, path, scenario.error());
  return std::nullopt;
}

int makeFilm(const std::string& path, const std::string& output) {
  const auto scenario = read(path);
  if (!scenario) return statusCannot;
  if (!writeFile(output, filmOf(*scenario).html)) return cannot(output + " cannot be written");
  return 0;
}

int makeGalleryOf(const std::string& scenarios, const std::string& folder) {
  const auto count = makeGallery(scenarios, folder);
  if (!count) return cannot(count.error());
  std::cout << *count << " films; begin with " << folder << "/index.html\n";
  return 0;
}

int serve(const Options& options) {
  std::optional<sim::Scenario> scenario;
  if (options.file) {
    scenario = read(*options.file);
    if (!scenario) return statusCannot;
  }
  Server server{std::move(scenario)};
  if (const auto bound = server.bind(options.port.value_or(Server::usualPort)); !bound) {
    if (options.port) return cannot(bound.error());
    if (const auto any = server.bindToAnyPort(); !any) return cannot(any.error());
    std::cout << "The usual " << bound.error() << ", so this is another one.\n";
  }
  std::cout << "The desk is at " << server.address() << "; Ctrl-C ends it.\n" << std::flush;
  server.serve();
  return 0;
}

int run(std::span<char*> arguments) {
  for (const std::string argument : arguments) {
    if (argument != "-h" && argument != "--help") continue;
    std::cout << usage;
    return 0;
  }
  const auto options = parse(arguments);
  if (!options) return statusCannot;
  if (options->film) return makeFilm(*options->film, *options->output);
  if (options->gallery) {
    return makeGalleryOf(options->file.value_or("scenarios"), *options->gallery);
  }
  return serve(*options);
}

}  // namespace
}  // namespace keyrow::desk

int main(int count, char* arguments[]) {
  return keyrow::desk::run(std::span{arguments, static_cast<std::size_t>(count)}.subspan(1));
}
