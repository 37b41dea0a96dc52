#pragma once

#include <string>

#include "platform/Bundle.h"

namespace keyrow {

/// The application's version as people read it: the short version, "0.0" when there is
/// none, and the build in brackets when there is one. For example "1.2 (45)".
std::string versionText(Bundle& bundle);

}  // namespace keyrow
