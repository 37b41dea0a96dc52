#include "sim/scenario/ScenarioFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

/// A folder of its own for each test.
class ScenarioFileTest : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directories(folder); }
  void TearDown() override { std::filesystem::remove_all(folder); }

  std::string write(const std::string& name, std::string_view contents) const {
    const auto path = folder / name;
    std::ofstream{path, std::ios::binary} << contents;
    return path.string();
  }

  const std::filesystem::path folder =
      std::filesystem::path{testing::TempDir()} / ("keyrow-files-" + std::to_string(getpid()));
};

TEST_F(ScenarioFileTest, AByteOrderMarkIsNoPartOfTheText) {
  EXPECT_EQ(readScenarioFile(write("a.txt", "\xEF\xBB\xBFwait 1s\n")), "wait 1s\n");
}

TEST_F(ScenarioFileTest, Utf16IsNamedOnce) {
  using std::string_literals::operator""s;
  for (const auto& text : {"\xFF\xFEw\0a\0"s, "\xFE\xFF\0w\0a"s, "w\0a\0"s, "\0w\0a"s}) {
    const auto read = readScenarioFile(write("a.txt", text));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error(), "expected UTF-8 text, found UTF-16");
  }
}

TEST_F(ScenarioFileTest, HasSixteenMebibytesAtMost) {
  EXPECT_TRUE(readScenarioFile(write("a.txt", std::string(maximumFileSize, '#'))));
  const auto read = readScenarioFile(write("a.txt", std::string(maximumFileSize + 1, '#')));
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error(), "expected a scenario of at most 16 MiB, found more");
}

TEST_F(ScenarioFileTest, AFolderStandsForAllItsScenarios) {
  const auto second = write("b.txt", "wait 1s");
  const auto first = write("a.txt", "wait 1s");
  write("notes.md", "");
  EXPECT_THAT(*scenarioFiles(folder.string()), ElementsAre(first, second));
  EXPECT_THAT(*scenarioFiles(first), ElementsAre(first));
}

TEST_F(ScenarioFileTest, AFolderWithoutScenariosIsAnError) {
  const auto files = scenarioFiles(folder.string());
  ASSERT_FALSE(files);
  EXPECT_EQ(files.error(), "expected scenarios, found a folder without any .txt");
}

}  // namespace
}  // namespace keyrow::sim
