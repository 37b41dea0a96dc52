#include "sim/scenario/LineEditor.h"

#include <histedit.h>
#include <langinfo.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <utility>

namespace keyrow::sim {

struct LineEditor::Editing {
  explicit Editing(Completions itsCompletions)
      : completions{std::move(itsCompletions)},
        line{el_init("keyrow-sim", stdin, stdout, stderr)},
        past{history_init()} {
    HistEvent event{};
    history(past, &event, H_SETSIZE, 1000);
    history(past, &event, H_SETUNIQUE, 1);
    el_set(line, EL_CLIENTDATA, this);
    el_set(line, EL_PROMPT, +[](EditLine*) { return const_cast<char*>("> "); });
    el_set(line, EL_EDITOR, "emacs");
    el_set(line, EL_HIST, history, past);
    el_set(line, EL_ADDFN, "keyrow-complete", "completes the word", complete);
    el_set(line, EL_BIND, "^I", "keyrow-complete", nullptr);
    // Ctrl-C reaches the editor instead of ending the program.
    el_set(line, EL_ADDFN, "keyrow-drop", "drops the line", drop);
    el_set(line, EL_SETTY, "-d", "-isig", nullptr);
    el_set(line, EL_BIND, "^C", "keyrow-drop", nullptr);
    el_source(line, nullptr);
  }
  ~Editing() {
    history_end(past);
    el_end(line);
  }
  Editing(const Editing&) = delete;
  Editing& operator=(const Editing&) = delete;

  static Editing& of(EditLine* line) {
    void* self = nullptr;
    el_get(line, EL_CLIENTDATA, &self);
    return *static_cast<Editing*>(self);
  }

  static unsigned char complete(EditLine* line, int /*key*/) {
    const auto* info = el_line(line);
    const std::string_view typed{info->buffer,
                                 static_cast<std::size_t>(info->cursor - info->buffer)};
    const auto found = of(line).completions(typed);
    if (found.empty()) return CC_ERROR;
    auto common = found.front();
    for (const auto& other : found) {
      const auto [end, ignored] = std::ranges::mismatch(common, other);
      common.erase(end, common.end());
    }
    // Not in the middle of a character.
    while (!common.empty() && found.size() > 1 &&
           (static_cast<unsigned char>(common.back()) & 0x80) != 0)
      common.pop_back();
    // What is typed of the word already ends the line.
    std::size_t overlap = std::min(common.size(), typed.size());
    while (overlap > 0 && !typed.ends_with(std::string_view{common}.substr(0, overlap))) --overlap;
    if (found.size() == 1) common += ' ';
    if (overlap < common.size()) {
      el_insertstr(line, common.substr(overlap).c_str());
      return CC_REFRESH;
    }
    std::fputc('\n', stdout);
    for (const auto& one : found) std::printf("  %s\n", one.c_str());
    return CC_REDISPLAY;
  }

  static unsigned char drop(EditLine* line, int /*key*/) {
    of(line).isDropped = true;
    std::fputs("^C", stdout);
    return CC_NEWLINE;
  }

  const Completions completions;
  EditLine* const line;
  History* const past;
  bool isDropped = false;
};

LineEditor::LineEditor(Completions completions) {
  // Letters outside ASCII are typed in the encoding of the terminal; scenarios are UTF-8.
  if (!std::setlocale(LC_CTYPE, "") || std::string_view{nl_langinfo(CODESET)} != "UTF-8") {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
  editing_ = std::make_unique<Editing>(std::move(completions));
}

LineEditor::~LineEditor() = default;

std::optional<std::string> LineEditor::nextLine() {
  while (true) {
    int count = 0;
    const char* typed = el_gets(editing_->line, &count);
    if (std::exchange(editing_->isDropped, false)) {
      std::fputc('\n', stdout);
      continue;
    }
    if (!typed || count <= 0) {
      std::fputc('\n', stdout);
      return std::nullopt;
    }
    std::string line{typed, static_cast<std::size_t>(count)};
    while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
    HistEvent event{};
    if (!line.empty()) history(editing_->past, &event, H_ENTER, line.c_str());
    return line;
  }
}

}  // namespace keyrow::sim
