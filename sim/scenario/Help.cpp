#include "sim/scenario/Help.h"

#include <algorithm>

#include "sim/machine/PortCall.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Language.h"
#include "sim/scenario/Prompt.h"

namespace keyrow::sim {

namespace {

/// Whether a person who asks for this word means the line: its first word or its second.
bool isAbout(std::string_view words, std::string_view asked) {
  if (words.starts_with(asked)) return true;
  const auto blank = words.find(' ');
  return blank != std::string_view::npos && words.substr(blank + 1).starts_with(asked);
}

class Help {
 public:
  Help(std::ostream& out, std::string_view asked) : out_{out}, asked_{asked} {}

  void print() {
    for (const auto& part : language()) {
      for (const auto& word : part.actions) show(word.words, word.usage, word.summary);
    }
    for (const auto& part : language()) {
      for (const auto& word : part.expectations) {
        show("expect " + std::string{word.words}, word.usage, word.summary);
      }
    }
    for (const auto& entry : eventForms) show(entry.words, entry.usage, entry.summary);
    for (const auto& entry : placeholders) show(entry.words, entry.usage, entry.summary);
    for (const auto& entry : promptWords) show(entry.words, entry.usage, entry.summary);
    if (!asked_.empty() && "CALL" != asked_) {
      for (const auto& call : portCalls) show(call.name, call.name, call.failure);
    } else if (!asked_.empty()) {
      for (const auto& call : portCalls)
        out_ << "      " << call.name << ": " << call.failure << '\n';
    }
    if (!hasShown_)
      out_ << "  Nothing is called " << quoted(asked_) << ". help lists everything.\n";
  }

 private:
  void show(std::string_view words, std::string_view usage, std::string_view summary) {
    if (!isAbout(words, asked_)) return;
    hasShown_ = true;
    out_ << "  " << usage << "\n      " << summary << '\n';
  }

  std::ostream& out_;
  const std::string_view asked_;
  bool hasShown_ = false;
};

}  // namespace

void printHelp(std::ostream& out, std::string_view word) { Help{out, word}.print(); }

}  // namespace keyrow::sim
