#include "reliability/ModelLines.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>
#include <vector>

namespace keyrow::reliability {

std::optional<FnState> modeNamed(std::string_view name) {
  if (name == "special") return FnState::special;
  if (name == "standard") return FnState::standard;
  return std::nullopt;
}

namespace {

using Words = std::vector<std::string>;

Words wordsOf(const std::string& line) {
  std::istringstream in{line};
  Words words;
  for (std::string word; in >> word;) words.push_back(std::move(word));
  return words;
}

/// The faults that the model knows, where they last until the next repair.
struct KnownFault {
  std::string_view call;
  bool preventsReading;
  bool preventsWriting;
};
constexpr std::array<KnownFault, 4> knownFaults{{
    {"find-service", true, true},
    {"read-service-property", true, false},
    {"open-connection", false, true},
    {"set-hid-parameter", false, true},
}};

/// The lines that the model knows, by how they begin.
struct Meaning {
  std::string_view beginning;
  void (*happen)(ModeModel&, const Words&);
};
constexpr auto nothing = [](ModeModel&, const Words&) {};
constexpr std::array<Meaning, 54> meanings{{
    {"repair", [](ModeModel& model, const Words&) { model.canRead = model.canWrite = true; }},
    {"fail ",
     [](ModeModel& model, const Words& words) {
       const auto& fault = *std::ranges::find(knownFaults, words[1], &KnownFault::call);
       model.canRead = model.canRead && !fault.preventsReading;
       model.canWrite = model.canWrite && !fault.preventsWriting;
     }},
    {"kill keyrow", [](ModeModel& model, const Words&) { model.kill(); }},
    {"front none", [](ModeModel& model, const Words&) { model.switchTo(std::nullopt); }},
    {"front ", [](ModeModel& model, const Words& words) { model.switchTo(words[1]); }},
    {"toggle override", [](ModeModel& model, const Words&) { model.toggleOverride(); }},
    {"toggle global", [](ModeModel& model, const Words&) { model.toggleGlobal(); }},
    {"clear override", [](ModeModel& model, const Words&) { model.clearOverride(); }},
    {"set global ",
     [](ModeModel& model, const Words& words) { model.setGlobal(*modeNamed(words[2])); }},
    {"set override ",
     [](ModeModel& model, const Words& words) {
       model.setOverride(*modeNamed(words[2]), words[4]);
     }},
    {"system-settings ",
     [](ModeModel& model, const Words& words) {
       model.changeInSystemSettings(*modeNamed(words[1]));
     }},
    {"hardware HID", [](ModeModel& model, const Words&) { model.changeInHardware(std::nullopt); }},
    {"hardware ",
     [](ModeModel& model, const Words& words) { model.changeInHardware(modeNamed(words[1])); }},
    {"install ", [](ModeModel& model, const Words& words) { model.installed.insert(words[1]); }},
    {"uninstall ", [](ModeModel& model, const Words& words) { model.installed.erase(words[1]); }},
    {"choose \"Use Media & System Controls by Default\"",
     [](ModeModel& model, const Words&) { model.setGlobal(FnState::special); }},
    {"choose \"Use F1-F12 by Default\"",
     [](ModeModel& model, const Words&) { model.setGlobal(FnState::standard); }},
    {"choose \"Use Media & System Controls in This App Only\"",
     [](ModeModel& model, const Words&) {
       if (model.frontmost) model.setOverride(FnState::special, *model.frontmost);
     }},
    {"choose \"Use F1-F12 in This App Only\"",
     [](ModeModel& model, const Words&) {
       if (model.frontmost) model.setOverride(FnState::standard, *model.frontmost);
     }},
    {"choose \"Quit\"", [](ModeModel& model, const Words&) { model.quit(); }},
    {"choose \"Settings…\"", nothing},
    {"choose \"Right Option\"", nothing},
    {"choose \"Off\"", nothing},
    {"preference true",
     [](ModeModel& model, const Words&) { model.state.preference = FnState::standard; }},
    {"preference false",
     [](ModeModel& model, const Words&) { model.state.preference = FnState::special; }},
    {"preference none", [](ModeModel& model, const Words&) { model.state.preference.reset(); }},
    {"answer ", nothing},
    {"login-item ", nothing},
    {"mail ", nothing},
    {"notifications ", nothing},
    {"update ", nothing},
    {"open notification", nothing},
    {"info ", nothing},
    {"click right", [](ModeModel& model, const Words&) { model.openMenu(); }},
    {"click \"Quit\"", [](ModeModel& model, const Words&) { model.quit(); }},
    {"click \"", nothing},
    {"click", [](ModeModel& model, const Words&) { model.click(); }},
    {"close ", nothing},
    {"sleep", [](ModeModel& model, const Words&) { model.sleep(); }},
    {"wake", [](ModeModel& model, const Words&) { model.wake(); }},
    {"quit keyrow", [](ModeModel& model, const Words&) { model.quit(); }},
    {"reopen keyrow", nothing},
    {"tab ", nothing},
    {"wait ", nothing},
    {"grant ", nothing},
    {"revoke ", nothing},
    {"caps-lock ", nothing},
    {"setting ", nothing},
    {"keyboard ", nothing},
    {"unplug ", nothing},
    {"disable tap ", nothing},
    {"press fn+escape ", [](ModeModel& model, const Words&) { model.clearOverride(); }},
    {"press fn+` ", [](ModeModel& model, const Words&) { model.toggleOverride(); }},
    {"press ", nothing},
}};

}  // namespace

bool isKnownFault(const std::string& line) {
  const auto words = wordsOf(line);
  return words.size() == 3 && words[0] == "fail" && words[2] == "always" &&
         std::ranges::find(knownFaults, words[1], &KnownFault::call) != knownFaults.end();
}

bool happen(const std::string& line, ModeModel& model) {
  const auto meaning = std::ranges::find_if(
      meanings, [&](const Meaning& candidate) { return line.starts_with(candidate.beginning); });
  if (meaning == meanings.end()) return false;
  meaning->happen(model, wordsOf(line));
  return true;
}

}  // namespace keyrow::reliability
