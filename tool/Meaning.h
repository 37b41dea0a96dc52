#pragma once

#include <expected>
#include <string>
#include <vector>

#include "core/Status.h"
#include "platform/Workspace.h"

namespace keyrow::tool {

// What people mean by what they type; or, in words for them, why that cannot be told.

/// The bundle identifier of an application: one of `known`, or of one that is there, which may be
/// meant by its identifier in any case, its path or its name.
std::expected<std::string, std::string> applicationMeant(const std::string& text,
                                                         const std::vector<std::string>& known,
                                                         Workspace& workspace);

/// The pair of numbers of a keyboard, which may be meant by that pair, or, while Keyrow runs, by
/// the name of a keyboard that is connected. One that can have no mode of its own is refused,
/// unless it is to follow the others.
std::expected<std::string, std::string> keyboardMeant(const std::string& text, bool isToFollow,
                                                      const Status& status);

}  // namespace keyrow::tool
