#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "core/FnState.h"

namespace keyrow::reliability {

/// What a user would say about Keyrow's modes, stated a second time and as simply as it
/// goes: what is remembered, and for each command what comes of it. It knows of one Keyrow,
/// of keyboards that can or cannot be read and written, and of nothing else that fails.
class ModeModel {
 public:
  using App = std::optional<std::string>;

  /// What there is to compare.
  struct State {
    /// What the keyboard holds; absent when that is no mode.
    std::optional<FnState> hardware = FnState::special;
    std::optional<FnState> preference;
    std::optional<FnState> global;
    std::map<std::string, FnState> overrides;
    /// What the status item shows.
    std::optional<FnState> shown;
    bool isLocal = false;

    friend bool operator==(const State&, const State&) = default;
  };

  State state;
  bool canRead = true;
  bool canWrite = true;
  bool isRunning = false;
  /// The last mode that was to be written could not be.
  bool hasFailedToWrite = false;
  App frontmost;
  /// The application before the last switch, as Keyrow knows it.
  App previous;
  std::set<std::string> installed;

  bool wasInSystemSettings() const;

  void launch();
  void quit();
  /// Without any goodbye.
  void kill();
  void switchTo(const App& app);
  void setGlobal(FnState mode);
  void setOverride(FnState mode, const std::string& app);
  void toggleGlobal();
  void toggleOverride();
  void clearOverride();
  /// The item in the menu bar is clicked.
  void click();
  /// Its menu is opened: it has to know the modes that it offers.
  void openMenu();
  void sleep();
  void wake();
  /// System Settings, or the keyboard itself, changes the mode behind Keyrow's back.
  void changeInSystemSettings(FnState mode);
  void changeInHardware(std::optional<FnState> mode) { state.hardware = mode; }

 private:
  std::optional<FnState> readable() const { return canRead ? state.hardware : std::nullopt; }
  std::optional<FnState> overrideInFront() const;
  std::optional<FnState> global();
  std::optional<FnState> globalOrHardware();
  bool write(FnState mode);
  void apply();
  void refresh();
  void adopt(std::optional<FnState> mode);
  void prune();
};

/// For messages.
std::string text(const ModeModel::State& state);

}  // namespace keyrow::reliability
