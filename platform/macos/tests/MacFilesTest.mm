#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {
namespace {

class MacFilesTest : public ::testing::Test {
 protected:
  const std::unique_ptr<Files> files = makeFiles();
  /// Of this test alone.
  const std::filesystem::path folder =
      files->temporaryDirectory() + "/" + utf8Text(NSUUID.UUID.UUIDString);

  void SetUp() override { std::filesystem::create_directory(folder); }
  void TearDown() override { std::filesystem::remove_all(folder); }

  static std::string contents(const std::filesystem::path& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
  }
};

TEST_F(MacFilesTest, TheTemporaryDirectoryExists) {
  const auto path = files->temporaryDirectory();
  EXPECT_TRUE(std::filesystem::is_directory(path)) << path;
  EXPECT_FALSE(path.ends_with('/')) << path;
}

TEST_F(MacFilesTest, WritesAFileToTheByteAndOverAnOlderOne) {
  const auto path = folder / "Keyrow-log-report-2024-03-01T08:00:00Z.txt";
  for (const std::string text : {"first, and longer", "naïve 😀\n", ""}) {
    EXPECT_TRUE(files->writeAtomically(path, text));
    EXPECT_EQ(contents(path), text);
  }
}

TEST_F(MacFilesTest, SaysWhenItCannotWrite) {
  EXPECT_FALSE(files->writeAtomically(folder / "nowhere" / "file.txt", "text"));
}

}  // namespace
}  // namespace keyrow::macos
