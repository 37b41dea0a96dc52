#include "tool/Report.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/KeyboardNumbers.h"
#include "core/Words.h"
#include "tool/Json.h"

namespace keyrow::tool {

namespace {

constexpr std::int64_t formatVersion = 1;

std::string wordOrUnknown(std::optional<FnState> mode) {
  return mode ? std::string{wordOf(*mode)} : "unknown";
}

std::string accessText(InputMonitoringAccess access) {
  switch (access) {
    case InputMonitoringAccess::granted:
      return "granted";
    case InputMonitoringAccess::denied:
      return "denied";
    case InputMonitoringAccess::unknown:
      break;
  }
  return "not asked yet";
}

std::string modeText(const Status& status) {
  auto text = wordOrUnknown(status.mode);
  switch (status.source) {
    case Status::Source::global:
      return text + ", by the global mode";
    case Status::Source::override_:
      return text + ", by an override";
    case Status::Source::unknown:
      break;
  }
  return text;
}

std::string sourceJson(Status::Source source) {
  switch (source) {
    case Status::Source::global:
      return json::text("global");
    case Status::Source::override_:
      return json::text("override");
    case Status::Source::unknown:
      break;
  }
  return json::nothing();
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& line : lines) text += (text.empty() ? "" : ", ") + line;
  return text.empty() ? "none" : text;
}

bool isConnected(const Status& status, std::string_view numbers) {
  if (!status.running) return false;
  for (const auto& keyboard : status.running->keyboards) {
    if (keyboard.numbers == numbers) return true;
  }
  return false;
}

std::string keyboardLine(const Status& status, const Status::Keyboard& keyboard) {
  auto line = keyboard.name;
  if (keyboard.numbers) line += " (" + *keyboard.numbers + ")";
  if (const auto mode = ownMode(status, keyboard)) {
    line += ": " + std::string{wordOf(*mode)};
    return status.translatesTopRows ? line + ", its own, which no shortcut changes"
                                    : line + ", once applyFnModeToExternalFunctionKeys is on";
  }
  if (!keyboard.isTranslatable) return line + ": the mode of the hardware";
  return line + (status.translatesTopRows ? ": follow" : ": F1 to F12");
}

std::string jsonOf(std::optional<FnState> mode) {
  return mode ? json::text(wordOf(*mode)) : json::nothing();
}

std::string jsonOf(const std::optional<std::string>& text) {
  return text ? json::text(*text) : json::nothing();
}

std::string jsonOf(const std::string& text) { return json::text(text); }

template <typename Value>
std::string jsonOf(const std::map<std::string, Value, std::less<>>& values) {
  std::vector<std::pair<std::string_view, std::string>> members;
  members.reserve(values.size());
  for (const auto& [key, value] : values) members.emplace_back(key, jsonOf(value));
  return json::object(members);
}

std::string accessWord(InputMonitoringAccess access) {
  return access == InputMonitoringAccess::unknown ? "unknown" : accessText(access);
}

std::string jsonOf(const Status& status, const Status::Running& running) {
  const bool isListed = knowsKeyboards(status);
  // One keyboard can be several devices.
  std::vector<std::string> keyboards;
  for (const auto& keyboard : running.keyboards) {
    addOnce(keyboards, json::object({{"name", json::text(keyboard.name)},
                                     {"numbers", jsonOf(keyboard.numbers)},
                                     {"translatable", json::flag(keyboard.isTranslatable)},
                                     {"mode", jsonOf(ownMode(status, keyboard))}}));
  }
  return json::object({{"process", json::number(running.processIdentifier)},
                       {"accessibility", json::text(running.isTrusted ? "granted" : "denied")},
                       {"inputMonitoring", json::text(accessWord(running.inputMonitoring))},
                       {"eventTap", json::flag(running.hasEventTap)},
                       {"sessionInFront", json::flag(running.isSessionActive)},
                       {"keyboardSeized", json::flag(running.isKeyboardSeized)},
                       {"keyboards", isListed ? json::array(keyboards) : json::nothing()}});
}

}  // namespace

void addOnce(std::vector<std::string>& texts, std::string text) {
  if (std::ranges::find(texts, text) == texts.end()) texts.push_back(std::move(text));
}

std::optional<FnState> ownMode(const Status& status, const Status::Keyboard& keyboard) {
  if (!keyboard.numbers || !keyboard.isTranslatable) return std::nullopt;
  const auto found = status.keyboardModes.find(*keyboard.numbers);
  return found == status.keyboardModes.end() ? std::nullopt : std::optional{found->second};
}

bool knowsKeyboards(const Status& status) {
  return status.running && status.running->seesKeyboards;
}

std::vector<Fact> facts(const Status& status, const Surroundings& surroundings) {
  std::vector<Fact> facts{
      {"Mode", modeText(status)},
      {"In front", status.application ? *status.application : "no application"},
      {"Global mode", status.global ? std::string{wordOf(*status.global)} : "none is stored"},
      {"Overrides", joined(overrideLines(status))},
      {"Keyboards", knowsKeyboards(status) || !status.keyboardModes.empty()
                        ? joined(keyboardLines(status))
                        : "unknown"}};
  if (status.running) {
    const auto& running = *status.running;
    facts.push_back(
        {"Keyrow", "runs as process " + std::to_string(running.processIdentifier) +
                       (running.isSessionActive ? "" : ", while another user has the keyboard")});
    facts.push_back({"Accessibility", running.isTrusted ? "granted" : "denied"});
    facts.push_back({"Input Monitoring", accessText(running.inputMonitoring)});
    facts.push_back({"Shortcuts", running.hasEventTap ? "work" : "do not work"});
  } else {
    facts.push_back({"Keyrow", surroundings.isKeyrowSilent ? "does not answer" : "does not run"});
    for (const char* what : {"Accessibility", "Input Monitoring", "Shortcuts"}) {
      facts.push_back({what, "unknown"});
    }
  }
  std::string secureInput = surroundings.isSecureInputOn ? "on" : "off";
  if (surroundings.secureInputHolder) secureInput += ", by " + *surroundings.secureInputHolder;
  facts.push_back({"Secure input", secureInput});
  return facts;
}

std::vector<Fact> settingFacts(const Status& status) {
  std::vector<Fact> facts;
  facts.reserve(status.settings.size());
  for (const auto& [name, value] : status.settings) facts.push_back({name, value});
  return facts;
}

std::string jsonText(const Status& status, const Surroundings& surroundings) {
  return json::object(
      {{"version", json::number(formatVersion)},
       {"mode", jsonOf(status.mode)},
       {"source", sourceJson(status.source)},
       {"application", jsonOf(status.application)},
       {"globalMode", jsonOf(status.global)},
       {"overrides", jsonOf(status.overrides)},
       {"keyboardModes", jsonOf(status.keyboardModes)},
       {"translatesTopRows", json::flag(status.translatesTopRows)},
       {"settings", jsonOf(status.settings)},
       {"keyrowRuns", json::flag(status.running || surroundings.isKeyrowRunning)},
       {"keyrow", status.running ? jsonOf(status, *status.running) : json::nothing()},
       {"secureInput", json::flag(surroundings.isSecureInputOn)},
       {"secureInputHolder", jsonOf(surroundings.secureInputHolder)}});
}

std::vector<std::string> overrideLines(const Status& status) {
  std::vector<std::string> lines;
  lines.reserve(status.overrides.size());
  for (const auto& [application, mode] : status.overrides) {
    lines.push_back(application + ": " + std::string{wordOf(mode)});
  }
  return lines;
}

std::vector<std::string> keyboardLines(const Status& status) {
  std::vector<std::string> lines;
  if (status.running) {
    // One keyboard can be several devices.
    for (const auto& keyboard : status.running->keyboards) {
      addOnce(lines, keyboardLine(status, keyboard));
    }
  }
  for (const auto& [numbers, mode] : status.keyboardModes) {
    if (isConnected(status, numbers)) continue;
    lines.push_back(numbers + ": " + std::string{wordOf(mode)} +
                    (knowsKeyboards(status) ? ", not connected" : ""));
  }
  return lines;
}

}  // namespace keyrow::tool
