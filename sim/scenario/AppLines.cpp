#include "sim/scenario/AppLines.h"

#include <array>
#include <utility>

#include "sim/scenario/Language.h"

namespace keyrow::sim {

Outcome Install::play(Stage& stage) const {
  stage.mac.applications.install(app, isElsewhere);
  return {};
}

Outcome Uninstall::play(Stage& stage) const {
  if (!stage.mac.applications.isInstalled(app)) return unplayable(app + " is not installed");
  stage.mac.applications.uninstall(app);
  return {};
}

Outcome Front::play(Stage& stage) const {
  auto& applications = stage.mac.applications;
  if (isUnnamed) {
    applications.activateUnnamed();
    return {};
  }
  if (app && !applications.isInstalled(*app) && applications.running(*app).empty()) {
    return unplayable(*app + " is not installed");
  }
  applications.activate(app);
  return {};
}

namespace {

Action parseInstall(LineReader& line) {
  auto app = line.bundleIdentifier();
  return Install{.app = std::move(app), .isElsewhere = line.accept("elsewhere")};
}

Action parseUninstall(LineReader& line) { return Uninstall{line.bundleIdentifier()}; }

Action parseFront(LineReader& line) {
  if (line.accept("none")) return Front{};
  if (line.accept("unnamed")) return Front{.app = std::nullopt, .isUnnamed = true};
  return Front{.app = line.bundleIdentifier()};
}

constexpr std::array<ActionWord, 3> actions{{
    {"install", "install APP [elsewhere]",
     "An application is put on the Mac, outside the folders for applications where it says so.",
     "install com.apple.TextEdit", parseInstall},
    {"uninstall", "uninstall APP", "An application is thrown away.", "uninstall com.apple.TextEdit",
     parseUninstall},
    {"front", "front APP|unnamed|none",
     "An installed application comes to the front, or one without a bundle identifier, or none is "
     "there any more.",
     "front com.apple.TextEdit", parseFront},
}};

}  // namespace

LanguagePart appLines() { return {actions, {}}; }

}  // namespace keyrow::sim
