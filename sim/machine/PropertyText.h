#pragma once

#include <optional>
#include <string>

#include "platform/PropertyValue.h"

namespace keyrow::sim {

/// The value as scenarios write it: true, 3, 0.5, "text", key=value ...; "none" when absent,
/// and {} for a dictionary without entries.
std::string propertyText(const std::optional<PropertyValue>& value);

/// The text in quotation marks, with the escapes that scenarios use.
std::string quoted(std::string_view text);

}  // namespace keyrow::sim
