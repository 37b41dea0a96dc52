#pragma once

#include <map>
#include <optional>
#include <string>

#include "core/FnState.h"

namespace keyrow::reliability {

/// The modes as they are on the machine.
struct Modes {
  /// What the keyboard holds; absent when that is no mode.
  std::optional<FnState> hardware;
  std::optional<FnState> preference;
  /// What is stored.
  std::optional<FnState> global;
  std::map<std::string, FnState> overrides;
  /// What the status item shows.
  std::optional<FnState> shown;
  bool isLocal = false;
};

/// What users may count on: the last mode that somebody chose for all applications, and that
/// was taken, is the one that is found. It knows what users did, and nothing of how Keyrow
/// finds out.
class ModeModel {
 public:
  /// The mode that was chosen last; absent where nobody was promised anything.
  const std::optional<FnState>& chosen() const { return chosen_; }

  /// Whether Keyrow had no opportunity yet to notice that choice.
  bool isUnseen() const { return isUnseen_; }

  /// Somebody chose a mode with Keyrow, and the keyboard took it.
  void chooseWithKeyrow(FnState mode) {
    chosen_ = mode;
    isUnseen_ = false;
  }

  /// Somebody chose a mode in System Settings: keyboard and preference took it. Nobody can tell
  /// where the preference is as Keyrow has last seen it.
  void chooseInSystemSettings(FnState mode) {
    isPreferenceUnseen_ = true;
    if (mode == chosen_ && !isUnseen_) return;
    forget();
    if (isStoreUnseen_ || !seenPreference_ || mode == *seenPreference_) return;
    chosen_ = mode;
    isUnseen_ = true;
  }

  /// Somebody stored a mode with the command line, and that took it. Where Keyrow has not seen an
  /// older choice yet, nobody can tell which is which.
  void store(FnState mode) {
    forget();
    if (!isPreferenceUnseen_) chosen_ = mode;
    isStoreUnseen_ = true;
  }

  /// Keyrow has heard of what was stored.
  void hear() { isStoreUnseen_ = false; }

  /// Something else has put a mode where Keyrow looks for choices. Nobody knows whether it was
  /// one.
  void meddle(std::optional<FnState> mode) {
    isPreferenceUnseen_ = true;
    if (mode != chosen_ || isUnseen_) forget();
  }

  /// Keyrow has had the opportunity to notice what was chosen, with this preference.
  void look(std::optional<FnState> preference) {
    isUnseen_ = isStoreUnseen_ = isPreferenceUnseen_ = false;
    if (preference) seenPreference_ = preference;
  }

  /// Keyrow has had it, but could not see, or not keep what it saw or wrote.
  void miss() {
    seenPreference_.reset();
    isPreferenceUnseen_ = true;
  }

  /// Nobody knows what Keyrow has noticed.
  void loseTrack() {
    forget();
    miss();
  }

  void forget() {
    chosen_.reset();
    isUnseen_ = false;
  }

 private:
  std::optional<FnState> chosen_;
  bool isUnseen_ = false;
  /// Keyboard or preference have been changed since Keyrow looked last.
  bool isPreferenceUnseen_ = false;
  /// Keyrow has not heard yet of what was stored last.
  bool isStoreUnseen_ = false;
  /// The system preference when Keyrow looked last; absent where nobody knows.
  std::optional<FnState> seenPreference_;
};

/// For messages.
std::string text(const Modes& modes);

}  // namespace keyrow::reliability
