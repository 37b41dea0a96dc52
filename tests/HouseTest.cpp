#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace keyrow {
namespace {

namespace fs = std::filesystem;

using ::testing::IsEmpty;
using ::testing::Not;

using Rooms = std::set<std::string>;

/// Which rooms a room stands on. It may look into these, into what they stand on in turn, and
/// into nothing else.
const std::map<std::string, Rooms> standsOn{
    {"platform", {}},
    {"core", {"platform"}},
    {"input", {"core"}},
    {"ui", {"input"}},
    {"app", {"ui"}},
    {"tool", {"core"}},
    {"platform/macos", {"app"}},
    {"platform/macos/tool", {"platform/macos", "tool"}},
    {"platform/macos/tests", {"platform/macos", "tests"}},
    {"sim/machine", {"core"}},
    {"sim/ports", {"sim/machine", "app", "tool"}},
    {"sim/scenario", {"sim/ports"}},
    {"reliability", {"sim/scenario"}},
    {"reliability/random", {"reliability"}},
    {"bench", {"sim/ports"}},
    {"fuzz", {"sim/scenario"}},
    {"desk", {"sim/scenario"}},
    {"tests", {"reliability", "bench", "desk"}},
};

const Rooms macRooms{"platform/macos", "platform/macos/tests", "platform/macos/tool"};

/// Which rooms may include a header in angle brackets, by how it begins. Only what has neither
/// an ending nor a folder, and so is the standard library's, may be included everywhere.
const std::map<std::string, Rooms> mayUse{
    {"AppKit/", macRooms},
    {"ApplicationServices/", macRooms},
    {"Carbon/", macRooms},
    {"CoreFoundation/", macRooms},
    {"Foundation/", macRooms},
    {"IOKit/", macRooms},
    {"OSLog/", macRooms},
    {"QuartzCore/", macRooms},
    {"ServiceManagement/", macRooms},
    {"Sparkle/", macRooms},
    {"UserNotifications/", macRooms},
    {"dispatch/", macRooms},
    {"mach/", macRooms},
    {"objc/", macRooms},
    {"os/", macRooms},
    {"benchmark/", {"bench"}},
    {"fuzzer/", {"fuzz"}},
    {"gmock/", {"tests"}},
    {"gtest/", {"tests", "platform/macos/tests"}},
    {"histedit.h", {"sim/scenario"}},
    {"httplib.h", {"desk", "tests"}},
    {"langinfo.h", {"sim/scenario"}},
    {"nlohmann/", {"desk", "fuzz", "tests"}},
    {"rapidcheck", {"reliability/random"}},
    {"sys/resource.h", {"bench"}},
    {"unistd.h",
     {"bench", "platform/macos", "platform/macos/tests", "reliability/random", "sim/scenario",
      "tests"}},
    {"utf8proc.h", {"fuzz", "sim/ports", "sim/scenario"}},
};

const fs::path root{KEYROW_SOURCE_DIR};

/// Everything below these rooms, in turn; they themselves only where they go in a circle.
Rooms below(const Rooms& rooms) {
  Rooms all;
  std::vector<std::string> open{rooms.begin(), rooms.end()};
  while (!open.empty()) {
    const auto room = open.back();
    open.pop_back();
    if (!all.insert(room).second) continue;
    const auto& next = standsOn.at(room);
    open.insert(open.end(), next.begin(), next.end());
  }
  return all;
}

Rooms mayLookInto(const std::string& room) { return below(standsOn.at(room)); }

bool isSource(const fs::path& file) {
  const std::set<fs::path> endings{".h", ".cpp", ".mm"};
  return endings.contains(file.extension());
}

/// The room of a file: its folder, save that the tests mirror the rooms in folders of theirs.
std::string roomOf(const fs::path& file) {
  const auto folder = file.parent_path().lexically_relative(root).generic_string();
  return folder.starts_with("tests/") ? "tests" : folder;
}

/// All files but those that were built.
std::vector<fs::path> allFiles() {
  std::vector<fs::path> files;
  for (auto entry = fs::recursive_directory_iterator{root}; entry != fs::end(entry); ++entry) {
    const auto name = entry->path().filename();
    if (entry.depth() == 0 && (name == "build" || name == ".git")) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file()) {
      files.push_back(entry->path());
    }
  }
  return files;
}

std::vector<fs::path> allSources() {
  auto files = allFiles();
  std::erase_if(files, [](const auto& file) { return !isSource(file); });
  return files;
}

std::string contentsOf(const fs::path& file) {
  std::ifstream in{file};
  return {std::istreambuf_iterator<char>{in}, {}};
}

/// What the groups of a regular expression match, once for each place in the text.
std::vector<std::pair<std::string, std::string>> matches(const std::string& text,
                                                         const std::string& expression) {
  const std::regex regex{expression, std::regex::ECMAScript | std::regex::multiline};
  std::vector<std::pair<std::string, std::string>> found;
  for (std::sregex_iterator match{text.begin(), text.end(), regex}, end; match != end; ++match) {
    found.emplace_back((*match)[1], match->size() > 2 ? (*match)[2].str() : std::string{});
  }
  return found;
}

/// What the file includes or imports: the opening bracket or quotation mark, and the header.
std::vector<std::pair<std::string, std::string>> includesOf(const fs::path& file) {
  return matches(contentsOf(file), R"re(^[ \t]*#[ \t]*(?:include|import)[ \t]*([<"])([^>"]+))re");
}

TEST(HouseTest, EveryFolderWithSourcesIsAKnownRoom) {
  const auto sources = allSources();
  ASSERT_THAT(sources, Not(IsEmpty()));
  for (const auto& file : sources) EXPECT_TRUE(standsOn.contains(roomOf(file))) << file;
}

TEST(HouseTest, NoRoomStandsOnItself) {
  for (const auto& [room, rooms] : standsOn) {
    EXPECT_FALSE(mayLookInto(room).contains(room)) << room;
  }
}

TEST(HouseTest, EveryArrowPointsDown) {
  for (const auto& file : allSources()) {
    const auto room = roomOf(file);
    const auto allowed = mayLookInto(room);
    for (const auto& [mark, header] : includesOf(file)) {
      if (mark != "\"") continue;
      const auto target = roomOf(root / header);
      EXPECT_TRUE(target == room || allowed.contains(target)) << file << " includes " << header;
    }
  }
}

TEST(HouseTest, OnlyTheStandardLibraryIsForEverybody) {
  const std::regex standard{"[a-z_]+"};
  for (const auto& file : allSources()) {
    for (const auto& [mark, header] : includesOf(file)) {
      if (mark != "<" || std::regex_match(header, standard)) continue;
      const auto entry = std::ranges::find_if(
          mayUse, [&](const auto& one) { return header.starts_with(one.first); });
      EXPECT_TRUE(entry != mayUse.end() && entry->second.contains(roomOf(file)))
          << file << " includes " << header;
    }
  }
}

/// The names between the backticks of a cell, without a slash at their end.
Rooms roomsInCell(const std::string& cell) {
  Rooms rooms;
  for (const auto& [room, none] : matches(cell, "`([a-z/]+?)/?`")) rooms.insert(room);
  return rooms;
}

TEST(HouseTest, TheDocumentTellsTheSameArrows) {
  std::map<std::string, Rooms> told;
  for (const auto& [room, cell] : matches(contentsOf(root / "docs/architecture.md"),
                                          R"(^\| `([a-z/]+)/` \|[^|]*\|([^|]*)\|$)")) {
    told.emplace(room, roomsInCell(cell));
  }
  // Stories, and no sources.
  EXPECT_EQ(told["scenarios"], Rooms{});
  told.erase("scenarios");
  EXPECT_EQ(told, standsOn);
}

/// A room by the name that its library has after "keyrow_".
std::string roomOfLibrary(std::string name) {
  for (const auto& [room, rooms] : standsOn) {
    auto library = room;
    std::ranges::replace(library, '/', '_');
    if (library == name) return room;
  }
  return "";
}

TEST(HouseTest, CMakeDrawsTheSameArrows) {
  Rooms drawn;
  for (const auto& file : allFiles()) {
    if (file.filename() != "CMakeLists.txt") continue;
    const auto text = contentsOf(file);
    for (const auto& [room, uses] :
         matches(text, R"(keyrow_room\(([a-z/]+)(?:\s+USES([^)]*))?\))")) {
      Rooms rooms;
      for (const auto& [library, none] : matches(uses, "([a-z_]+)")) {
        rooms.insert(roomOfLibrary(library));
      }
      EXPECT_EQ(rooms, standsOn.at(room)) << file << ": " << room;
      drawn.insert(room);
    }
  }
  // The others link what they need themselves.
  for (const auto& [room, rooms] : standsOn) {
    if (drawn.contains(room)) continue;
    const auto allowed = mayLookInto(room);
    const auto text = contentsOf(root / room / "CMakeLists.txt");
    for (const auto& [call, none] : matches(text, R"((target_link_libraries\([^)]*\)))")) {
      for (const auto& [library, unused] : matches(call, "keyrow_([a-z_]+)")) {
        const auto used = roomOfLibrary(library);
        EXPECT_TRUE(used.empty() || used == room || allowed.contains(used)) << room << ": " << call;
      }
    }
  }
  EXPECT_THAT(drawn,
              testing::IsSupersetOf({"platform", "core", "input", "ui", "app", "sim/ports"}));
}

}  // namespace
}  // namespace keyrow
