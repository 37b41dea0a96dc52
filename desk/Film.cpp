#include "desk/Film.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "desk/ContentHash.h"
#include "desk/Page.h"
#include "desk/Session.h"
#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::desk {

namespace {

using nlohmann::json;

/// The modules as one, in which nothing is imported.
std::string bundledModules() {
  std::string bundle;
  for (const auto& file : pageFiles()) {
    if (!file.name.ends_with(".js")) continue;
    auto rest = file.contents;
    while (!rest.empty()) {
      const auto end = std::min(rest.find('\n'), rest.size() - 1);
      auto line = rest.substr(0, end + 1);
      rest.remove_prefix(end + 1);
      if (line.starts_with("import ")) continue;
      if (line.starts_with("export ")) line.remove_prefix(std::string_view{"export "}.size());
      bundle += line;
    }
  }
  return bundle;
}

void replace(std::string& text, std::string_view what, const std::string& with) {
  const auto place = text.find(what);
  if (place != std::string::npos) text.replace(place, what.size(), with);
}

/// JSON that no text in it can break out of: without a "<" there is no end of a script.
std::string dataOf(const json& data) {
  auto text = data.dump(-1, ' ', /*ensure_ascii=*/true, json::error_handler_t::replace);
  std::string safe;
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::string escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if (c == '&') {
      safe += "&amp;";
    } else if (c == '<') {
      safe += "&lt;";
    } else if (c == '"') {
      safe += "&quot;";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::string policy(const std::string& script, const std::string& style) {
  return "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src '" +
         contentHash(script) + "'; style-src '" + contentHash(style) +
         "'; base-uri 'none'; form-action 'none'\">";
}

/// The page of films: one file, whose parts are all inside.
std::string filmPage(const std::string& name, const json& data) {
  const auto script = bundledModules();
  const std::string style{pageFile("desk.css")};
  std::string html{pageFile("index.html")};
  // What comes from the scenario goes in last, so that nothing in it is replaced.
  replace(html, "<link rel=\"stylesheet\" href=\"desk.css\">",
          policy(script, style) + "\n<style>" + style + "</style>");
  const auto place = html.find("<script type=\"module\" src=\"desk.js\"></script>");
  const auto titleEnd = html.find("</title>");
  if (place == std::string::npos || titleEnd == std::string::npos) return html;
  const auto tag = std::string_view{"<script type=\"module\" src=\"desk.js\"></script>"}.size();
  return html.substr(0, titleEnd) + ": " + escaped(name) + html.substr(titleEnd, place - titleEnd) +
         "<script type=\"application/json\" id=\"film\">" + dataOf(data) +
         "</script>\n<script type=\"module\">" + script + "</script>" + html.substr(place + tag);
}

std::string titleOf(const std::string& path) {
  auto title = std::filesystem::path{path}.stem().string();
  std::ranges::replace(title, '-', ' ');
  return title;
}

std::string galleryPage(const std::vector<std::pair<std::string, std::string>>& films) {
  const std::string style{pageFile("gallery.css")};
  std::string list;
  for (const auto& [file, title] : films) {
    list += "<li><a href=\"" + escaped(file) + "\">" + escaped(title) + "</a></li>\n";
  }
  return "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n" +
         policy("", style) +
         "\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<title>Keyrow: all scenarios</title>\n<style>" +
         style + "</style>\n</head>\n<body>\n<main>\n<h1>Keyrow: all scenarios</h1>\n<p>" +
         std::to_string(films.size()) + " films of the simulated Mac.</p>\n<ol>\n" + list +
         "</ol>\n</main>\n</body>\n</html>\n";
}

}  // namespace

json fileOf(const sim::Scenario& scenario) {
  auto lines = json::array();
  for (const auto& step : scenario.steps) {
    lines.push_back({{"line", lineOf(step)},
                     {"kind", step.isComment()       ? "comment"
                              : step.isExpectation() ? "expectation"
                                                     : "action"},
                     {"number", step.line}});
  }
  return {{"name", scenario.name}, {"lines", std::move(lines)}};
}

Film filmOf(const sim::Scenario& scenario) {
  Session session;
  PlayRequest request;
  for (const auto& step : scenario.steps) request.lines.push_back(lineOf(step));
  auto played = session.play(request);
  Film film;
  for (const auto& frame : played["frames"]) {
    if (!frame["failure"].is_null()) ++film.unmetExpectations;
  }
  film.isCutShort = !played["refused"].is_null();
  film.html = filmPage(scenario.name, {{"file", fileOf(scenario)},
                                       {"start", Session::blank()},
                                       {"frames", std::move(played["frames"])},
                                       {"refused", std::move(played["refused"])}});
  return film;
}

bool writeFile(const std::string& path, const std::string& contents) {
  std::ofstream file{path, std::ios::binary};
  file << contents;
  file.close();
  return !file.fail();
}

std::expected<int, std::string> makeGallery(const std::string& scenarios,
                                            const std::string& folder) {
  const auto files = sim::scenarioFiles(scenarios);
  if (!files) return std::unexpected{scenarios + ": " + files.error()};
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return std::unexpected{folder + ": " + error.message()};
  std::vector<std::pair<std::string, std::string>> films;
  for (const auto& file : *files) {
    auto scenario = sim::readScenario(file);
    if (!scenario) return std::unexpected{file + ": it does not parse"};
    const auto name = std::filesystem::path{file}.stem().string() + ".html";
    scenario->name = titleOf(file);
    const auto output = (std::filesystem::path{folder} / name).string();
    if (!writeFile(output, filmOf(*scenario).html)) {
      return std::unexpected{output + ": cannot be written"};
    }
    films.emplace_back(name, titleOf(file));
  }
  if (!writeFile(folder + "/index.html", galleryPage(films))) {
    return std::unexpected{folder + "/index.html: cannot be written"};
  }
  return static_cast<int>(films.size());
}

}  // namespace keyrow::desk
