#include "tool/Meaning.h"

#include <algorithm>

#include "core/Commands.h"
#include "core/KeyboardNumbers.h"
#include "core/LogText.h"
#include "core/Words.h"
#include "tool/Report.h"

namespace keyrow::tool {

namespace {

using Meaning = std::expected<std::string, std::string>;

/// Stands for the numbers of a keyboard that lacks one.
constexpr std::string_view numberless = "one that does not tell its numbers";

/// The only one of these; of several, all are told.
Meaning onlyOne(const std::string& text, const std::vector<std::string>& meant) {
  if (meant.size() == 1) return meant.front();
  auto problem = inQuotes(text) + " can be";
  for (const auto& one : meant) problem += (&one == &meant.front() ? " " : " or ") + inOneLine(one);
  return std::unexpected{problem + "."};
}

}  // namespace

Meaning applicationMeant(const std::string& text, const std::vector<std::string>& known,
                         Workspace& workspace) {
  if (std::ranges::find(known, text) != known.end()) return text;
  const bool isPath = text.find('/') != std::string::npos;
  auto identifier =
      isPath ? workspace.bundleIdentifier(text) : workspace.bundleIdentifierAsSpelled(text);
  if (identifier) return *std::move(identifier);
  if (isPath) {
    return std::unexpected{"There is no application at " + inQuotes(text) + "."};
  }
  auto names = known;
  std::vector<std::string> meant;
  const bool looksLikeIdentifier = text.find('.') != std::string::npos;
  for (const auto& application : workspace.applications()) {
    addOnce(names, application.name);
    if (looksLikeIdentifier) addOnce(names, application.bundleIdentifier);
    if (isSameWord(application.name, text)) addOnce(meant, application.bundleIdentifier);
  }
  if (meant.empty()) return std::unexpected{unknownWord("application", text, names)};
  return onlyOne(text, meant);
}

Meaning keyboardMeant(const std::string& text, bool isToFollow, const Status& status) {
  const auto pair = keyboardNumbersFromText(text);
  if (!status.running) {
    if (pair) return pair->text();
    return std::unexpected{
        "Keyrow does not run: a keyboard's name says nothing then, only its pair of numbers."};
  }
  if (!pair && !knowsKeyboards(status)) {
    return std::unexpected{
        "Keyrow sees no keyboards: a name says nothing then, only a pair of numbers. keyrow doctor "
        "knows more."};
  }
  std::vector<std::string> names;
  std::vector<std::string> meant;
  bool isThere = false;
  bool isTranslatable = false;
  for (const auto& keyboard : status.running->keyboards) {
    addOnce(names, keyboard.name);
    const bool isMeant = pair ? keyboard.numbers == pair->text() : isSameWord(keyboard.name, text);
    if (!isMeant) continue;
    isThere = true;
    isTranslatable |= keyboard.isTranslatable;
    addOnce(meant, keyboard.numbers.value_or(std::string{numberless}));
  }
  if (pair && !isThere) return pair->text();
  if (!isThere) {
    const bool looksLikePair = text.find(':') != std::string::npos;
    return std::unexpected{unknownWord("keyboard", text, names) +
                           (looksLikePair ? " A pair of numbers is written as in 046d:c33f." : "")};
  }
  if (meant.size() > 1) return onlyOne(text, meant);
  if (!isTranslatable && !isToFollow) return std::unexpected{std::string{Commands::appleKeyboards}};
  if (meant.front() == numberless) {
    return std::unexpected{
        "This keyboard does not tell its numbers, so it cannot be told from others, and has no "
        "mode of its own."};
  }
  return meant.front();
}

}  // namespace keyrow::tool
