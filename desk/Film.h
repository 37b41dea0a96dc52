#pragma once

#include <expected>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "sim/scenario/Scenario.h"

namespace keyrow::desk {

/// A scenario's lines, as the page wants them: {"name": …, "lines": [{"line", "kind", "number"}]}.
nlohmann::json fileOf(const sim::Scenario& scenario);

/// The whole scenario, played, as one HTML file that needs nothing else.
struct Film {
  std::string html;
  int unmetExpectations = 0;
  /// Whether a line could not be carried out.
  bool isCutShort = false;
};
Film filmOf(const sim::Scenario& scenario);

/// Films of all scenarios of a folder, in another one, with an index; gives their number, or says
/// why it could not.
std::expected<int, std::string> makeGallery(const std::string& scenarios,
                                            const std::string& folder);

/// Writes a whole file; false when that fails.
bool writeFile(const std::string& path, const std::string& contents);

}  // namespace keyrow::desk
