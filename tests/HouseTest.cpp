#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace keyrow {
namespace {

namespace fs = std::filesystem;

/// Which rooms a room may look into, besides itself. The arrows point one way.
const std::map<std::string, std::set<std::string>> mayInclude{
    {"platform", {}},
    {"core", {"platform"}},
    {"input", {"core", "platform"}},
    {"ui", {"input", "core", "platform"}},
    {"app", {"ui", "input", "core", "platform"}},
    {"platform/macos", {"app", "ui", "input", "core", "platform"}},
    {"platform/macos/tests", {"platform/macos", "tests", "app", "ui", "input", "core", "platform"}},
    {"sim/machine", {"core", "platform"}},
    {"sim/ports", {"sim/machine", "app", "ui", "input", "core", "platform"}},
    {"bench", {"sim/ports", "sim/machine", "app", "ui", "input", "core", "platform"}},
    {"reliability/random",
     {"reliability", "sim/scenario", "sim/ports", "sim/machine", "app", "ui", "input", "core",
      "platform"}},
    {"reliability",
     {"sim/scenario", "sim/ports", "sim/machine", "app", "ui", "input", "core", "platform"}},
    {"sim/scenario", {"sim/ports", "sim/machine", "app", "ui", "input", "core", "platform"}},
    {"fuzz",
     {"sim/scenario", "sim/ports", "sim/machine", "bench", "app", "ui", "input", "core",
      "platform"}},
};

const fs::path root{KEYROW_SOURCE_DIR};

bool isSource(const fs::path& file) {
  const std::set<fs::path> endings{".h", ".cpp", ".mm"};
  return endings.contains(file.extension());
}

std::vector<fs::path> sourcesOf(const std::string& room) {
  std::vector<fs::path> sources;
  for (const auto& entry : fs::directory_iterator{root / room}) {
    if (isSource(entry.path())) sources.push_back(entry.path());
  }
  return sources;
}

/// What the file includes or imports, with the brackets or quotation marks.
std::vector<std::string> includesOf(const fs::path& file) {
  static const std::regex directive{R"(^\s*#\s*(?:include|import)\s*([<"][^>"]+[>"]))"};
  std::vector<std::string> includes;
  std::ifstream in{file};
  for (std::string line; std::getline(in, line);) {
    std::smatch match;
    if (std::regex_search(line, match, directive)) includes.push_back(match[1]);
  }
  return includes;
}

TEST(HouseTest, EveryFolderOfTheProductIsAKnownRoom) {
  const std::set<std::string> elsewhere{"build", "tests", ".git"};
  for (auto entry = fs::recursive_directory_iterator{root}; entry != fs::end(entry); ++entry) {
    const auto folder = fs::relative(entry->path().parent_path(), root).generic_string();
    if (folder == "." && elsewhere.contains(entry->path().filename())) {
      entry.disable_recursion_pending();
    }
    EXPECT_TRUE(!isSource(entry->path()) || mayInclude.contains(folder)) << entry->path();
  }
}

TEST(HouseTest, EveryArrowPointsDown) {
  std::size_t seen = 0;
  for (const auto& [room, allowed] : mayInclude) {
    for (const auto& file : sourcesOf(room)) {
      for (const auto& include : includesOf(file)) {
        if (include.front() != '"') continue;
        ++seen;
        const auto target =
            fs::path{include.substr(1, include.size() - 2)}.parent_path().generic_string();
        EXPECT_TRUE(target == room || allowed.contains(target)) << file << " includes " << include;
      }
    }
  }
  EXPECT_GT(seen, 100U);
}

TEST(HouseTest, OnlyTheMacRoomIncludesApplesHeaders) {
  const std::regex apple{
      R"(<(AppKit|ApplicationServices|Carbon|Cocoa|CoreFoundation|CoreGraphics|Foundation|IOKit|OSLog|ServiceManagement|Sparkle|UserNotifications|dispatch|mach|os)/)"};
  bool macRoomDoes = false;
  for (const auto& [room, allowed] : mayInclude) {
    for (const auto& file : sourcesOf(room)) {
      for (const auto& include : includesOf(file)) {
        if (!std::regex_search(include, apple)) continue;
        EXPECT_TRUE(room.starts_with("platform/macos")) << file << " includes " << include;
        macRoomDoes = true;
      }
    }
  }
  EXPECT_TRUE(macRoomDoes);
}

}  // namespace
}  // namespace keyrow
