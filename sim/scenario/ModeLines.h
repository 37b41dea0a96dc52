#pragma once

#include <optional>
#include <string>

#include "core/FnState.h"
#include "platform/PropertyValue.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// The user changes the mode in System Settings: hardware and preference follow.
struct ChangeInSystemSettings {
  FnState mode;
  Outcome play(Stage& stage) const;
};

/// Something else changes what the hardware holds.
struct ChangeHardware {
  /// What is set: the mode, or "HIDParameters" as a whole.
  enum class What { mode, parameters };
  What what = What::mode;
  /// Absent where it is removed.
  std::optional<PropertyValue> value;

  /// The mode that the hardware holds then; absent when that is none.
  std::optional<FnState> mode() const;
  Outcome play(Stage& stage) const;
};

/// Something else sets the system preference, or removes it where there is no value.
struct ChangePreference {
  std::optional<PropertyValue> value;
  Outcome play(Stage& stage) const;
};

/// Something else writes one of Keyrow's settings, or deletes it where there is no value.
struct WriteDefaults {
  std::string key;
  std::optional<PropertyValue> value;
  Outcome play(Stage& stage) const;
};

/// An administrator manages one of Keyrow's settings, or does no more where there is no value.
struct ManageSetting {
  std::string key;
  std::optional<PropertyValue> value;
  Outcome play(Stage& stage) const;
};

/// Something else adds an override to those that are stored.
struct AddOverride {
  std::string app;
  FnState mode;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
