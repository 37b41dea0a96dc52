#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sim/ports/ProcessContext.h"
#include "ui/StatusItemView.h"

namespace keyrow::sim {

/// A process's item in the menu bar, and the user's hands on it.
class SimulatedStatusItemView final : public StatusItemView {
 public:
  explicit SimulatedStatusItemView(const ProcessContext& context) : context_{context} {}

  void create() override;
  void setImage(std::string_view systemSymbolName) override;
  void setCapsLockIndicatorHidden(bool hidden) override;
  void setScopeIndicator(bool hidden, std::optional<std::string_view> toolTip) override;
  void setAccessibilityValue(std::string_view value) override;
  void announce(std::string_view text) override;
  void setHighlighted(bool highlighted) override;
  /// The menu stays open until the user chooses something or closes it.
  void popUpMenu(const std::vector<MenuItem>& items) override;

  bool exists() const { return exists_; }
  /// The system symbol on the button; "none" before there is one.
  const std::string& image() const { return image_; }
  /// What is to be seen beside it: "none", "override", "caps-lock", or "both" where one
  /// hides the other.
  std::string dot() const;
  bool isCapsLockIndicatorHidden() const { return isCapsLockIndicatorHidden_; }
  bool isScopeIndicatorHidden() const { return isScopeIndicatorHidden_; }
  const std::optional<std::string>& scopeToolTip() const { return scopeToolTip_; }
  /// The same as scenarios write it: a quoted text, or none.
  std::string toolTipText() const;
  /// What VoiceOver says of its state; empty before it is known.
  const std::string& accessibilityValue() const { return accessibilityValue_; }
  /// The same as scenarios write it: a quoted text, or none.
  std::string valueText() const;
  bool isHighlighted() const { return isHighlighted_; }
  /// Whether it was when the menu opened: on a Mac the menu closes before that call returns.
  bool wasHighlightedForMenu() const { return wasHighlightedForMenu_; }
  /// The items of the open menu; null when none is open.
  const std::vector<MenuItem>* menu() const { return menu_ ? &*menu_ : nullptr; }

  void click(ClickEvent event, bool isControlHeld = false);
  /// The user performs the action "Show Menu" with VoiceOver.
  void showMenu();
  /// Chooses the enabled item with this title; false when there is none.
  bool choose(std::string_view title);
  void closeMenu();

 private:
  void change(std::string what, std::string before, std::string now);

  const ProcessContext& context_;
  bool exists_ = false;
  std::string image_ = "none";
  bool isCapsLockIndicatorHidden_ = true;
  bool isScopeIndicatorHidden_ = true;
  std::optional<std::string> scopeToolTip_;
  std::string accessibilityValue_;
  bool isHighlighted_ = false;
  bool wasHighlightedForMenu_ = false;
  std::optional<std::vector<MenuItem>> menu_;
};

}  // namespace keyrow::sim
