#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keyrow::sim {

/// Lets a person type lines on the terminal, with editing, a history, and completion by the Tab
/// key (libedit). Ctrl-C drops the line, Ctrl-D on an empty one ends.
class LineEditor {
 public:
  /// What may stand in place of the last word of a line.
  using Completions = std::function<std::vector<std::string>(std::string_view line)>;

  explicit LineEditor(Completions completions);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  /// The next line that was typed; absent at the end.
  std::optional<std::string> nextLine();

 private:
  struct Editing;
  std::unique_ptr<Editing> editing_;
};

}  // namespace keyrow::sim
