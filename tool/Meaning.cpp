#include "tool/Meaning.h"

#include <algorithm>

#include "core/Commands.h"
#include "core/KeyboardNumbers.h"
#include "core/LogText.h"
#include "core/Words.h"

namespace keyrow::tool {

namespace {

using Meaning = std::expected<std::string, std::string>;

bool contains(const std::vector<std::string>& texts, const std::string& text) {
  return std::ranges::find(texts, text) != texts.end();
}

/// Adds it where it is not there yet.
void note(std::vector<std::string>& texts, const std::string& text) {
  if (!contains(texts, text)) texts.push_back(text);
}

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
  if (text.find('/') != std::string::npos) {
    if (auto identifier = workspace.bundleIdentifier(text)) return *identifier;
    return std::unexpected{"There is no application at " + inQuotes(text) + "."};
  }
  if (contains(known, text) || workspace.isApplicationInstalled(text)) return text;

  std::vector<std::string> names;
  std::vector<std::string> meant;
  for (const auto& application : workspace.applications()) {
    names.push_back(application.name);
    if (isSameWord(application.name, text)) note(meant, application.bundleIdentifier);
  }
  if (meant.empty()) return std::unexpected{unknownWord("application", text, names)};
  return onlyOne(text, meant);
}

Meaning keyboardMeant(const std::string& text, const Status& status) {
  const auto pair = keyboardNumbersFromText(text);
  if (!status.running) {
    if (pair) return pair->text();
    return std::unexpected{
        "Keyrow does not run: a keyboard's name says nothing then, only its pair of numbers."};
  }
  std::vector<std::string> names;
  std::vector<std::string> meant;
  bool isApple = false;
  bool lacksNumbers = false;
  for (const auto& keyboard : status.running->keyboards) {
    names.push_back(keyboard.name);
    const bool isMeant = pair ? keyboard.numbers == pair->text() : isSameWord(keyboard.name, text);
    if (!isMeant) continue;
    if (!keyboard.isTranslatable) {
      isApple = true;
    } else if (!keyboard.numbers) {
      lacksNumbers = true;
    } else {
      note(meant, *keyboard.numbers);
    }
  }
  if (!meant.empty()) return onlyOne(text, meant);
  if (isApple) return std::unexpected{std::string{Commands::appleKeyboards}};
  if (pair) return pair->text();
  if (lacksNumbers) {
    return std::unexpected{
        "This keyboard does not tell its numbers, so it cannot be told from others, and has no "
        "mode of its own."};
  }
  return std::unexpected{unknownWord("keyboard", text, names)};
}

}  // namespace keyrow::tool
