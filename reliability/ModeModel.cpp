#include "reliability/ModeModel.h"

#include "sim/machine/ModeWords.h"

namespace keyrow::reliability {

namespace {

FnState other(FnState mode) {
  return mode == FnState::special ? FnState::standard : FnState::special;
}

bool isSystemSettings(const ModeModel::App& app) {
  return app == "com.apple.systempreferences" || app == "com.apple.SystemSettings";
}

}  // namespace

bool ModeModel::wasInSystemSettings() const { return isSystemSettings(previous); }

void ModeModel::launch() {
  isRunning = true;
  hasFailedToWrite = false;
  refresh();
  prune();
  previous = frontmost;
  apply();
}

void ModeModel::quit() {
  if (const auto mode = global()) write(*mode);
  prune();
  const auto mirrored = state.global ? state.global : readable();
  if (mirrored) state.preference = mirrored;
  kill();
}

void ModeModel::kill() {
  isRunning = false;
  state.shown.reset();
  state.isLocal = false;
}

void ModeModel::switchTo(const App& app) {
  frontmost = app;
  if (!isRunning) return;
  const bool leavesSystemSettings = wasInSystemSettings() && !isSystemSettings(app);
  previous = app;
  // A mode is adopted that somebody has chosen, and not one that Keyrow left there.
  const bool isLeftover =
      (state.isLocal || hasFailedToWrite) && (!state.shown || state.shown == state.hardware);
  if ((leavesSystemSettings || !state.isLocal) && !isLeftover) adopt(readable());
  apply();
}

void ModeModel::setGlobal(FnState mode) {
  if (!write(mode)) return;
  state.global = mode;
  state.isLocal = false;
}

void ModeModel::setOverride(FnState mode, const std::string& app) {
  if (!write(mode)) return;
  state.overrides[app] = mode;
  state.isLocal = true;
}

void ModeModel::toggleGlobal() {
  if (const auto mode = globalOrHardware()) setGlobal(other(*mode));
}

void ModeModel::toggleOverride() {
  if (!frontmost) return;
  const auto local = overrideInFront();
  const auto mode = local ? local : globalOrHardware();
  if (mode) setOverride(other(*mode), *frontmost);
}

void ModeModel::clearOverride() {
  if (!overrideInFront()) {
    toggleGlobal();
    return;
  }
  const auto mode = global();
  if (!mode || !write(*mode)) return;
  state.isLocal = false;
  state.overrides.erase(*frontmost);
}

void ModeModel::click() {
  if (state.isLocal) {
    toggleOverride();
  } else {
    toggleGlobal();
  }
}

void ModeModel::openMenu() { global(); }

void ModeModel::sleep() {
  const auto mirrored = state.global ? state.global : readable();
  if (isRunning && mirrored) state.preference = mirrored;
}

void ModeModel::wake() {
  if (!isRunning) return;
  refresh();
  apply();
}

void ModeModel::changeInSystemSettings(FnState mode) {
  state.hardware = mode;
  state.preference = mode;
}

std::optional<FnState> ModeModel::overrideInFront() const {
  if (!frontmost) return std::nullopt;
  const auto found = state.overrides.find(*frontmost);
  return found == state.overrides.end() ? std::nullopt : std::optional{found->second};
}

std::optional<FnState> ModeModel::global() {
  if (!state.global) state.global = state.preference ? state.preference : readable();
  return state.global;
}

std::optional<FnState> ModeModel::globalOrHardware() {
  const auto mode = global();
  return mode ? mode : readable();
}

bool ModeModel::write(FnState mode) {
  hasFailedToWrite = !canWrite;
  if (!canWrite) return false;
  state.hardware = mode;
  state.shown = mode;
  return true;
}

void ModeModel::apply() {
  if (const auto local = overrideInFront()) {
    if (write(*local)) state.isLocal = true;
    return;
  }
  const auto mode = global();
  if (!mode) {
    refresh();
    return;
  }
  if (write(*mode)) state.isLocal = false;
}

void ModeModel::refresh() {
  if (const auto mode = readable()) state.shown = mode;
}

void ModeModel::adopt(std::optional<FnState> mode) {
  if (mode) state.global = mode;
}

void ModeModel::prune() {
  std::erase_if(state.overrides,
                [this](const auto& entry) { return !installed.contains(entry.first); });
}

std::string text(const ModeModel::State& state) {
  auto result = "hardware " + sim::modeWord(state.hardware) + ", preference " +
                sim::modeWord(state.preference) + ", global " + sim::modeWord(state.global) +
                ", shown " + sim::modeWord(state.shown) +
                (state.isLocal ? ", local scope" : ", global scope") + ", overrides";
  if (state.overrides.empty()) result += " none";
  for (const auto& [app, mode] : state.overrides) result += " " + app + "=" + sim::modeWord(mode);
  return result;
}

}  // namespace keyrow::reliability
