#include "sim/scenario/ScenarioError.h"

#include <algorithm>

namespace keyrow::sim {

void printErrors(std::ostream& out, const std::string& name,
                 const std::vector<ScenarioError>& errors) {
  constexpr std::size_t mostShown = 20;
  for (std::size_t index = 0; index < std::min(errors.size(), mostShown); ++index) {
    const auto& [line, column, message] = errors[index];
    out << name << ":";
    if (line > 0) out << line << ":" << column << ":";
    out << " " << message << '\n';
  }
  if (errors.size() > mostShown) {
    out << name << ": and " << errors.size() - mostShown << " more lines like these\n";
  }
}

}  // namespace keyrow::sim
