#include "sim/scenario/ScenarioFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace keyrow::sim {

std::expected<std::string, std::string> readScenarioFile(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    return std::unexpected{"expected a scenario file, found a directory"};
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file{std::fopen(path.c_str(), "rb"),
                                                             &std::fclose};
  if (!file) return std::unexpected{std::string{"cannot be opened: "} + std::strerror(errno)};

  // One byte more than fits tells that there is more, also of a file without an end.
  std::string text(maximumFileSize + 1, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), file.get()));
  if (std::ferror(file.get()) != 0) {
    return std::unexpected{std::string{"cannot be read: "} + std::strerror(errno)};
  }
  if (text.size() > maximumFileSize) {
    return std::unexpected{"expected a scenario of at most " +
                           std::to_string(maximumFileSize / 1024 / 1024) + " MiB, found more"};
  }
  if (text.starts_with("\xEF\xBB\xBF")) return text.substr(3);
  // Every other byte of plain letters in UTF-16 is 0.
  const auto start = std::string_view{text}.substr(0, 4);
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF") ||
      (start.size() > 1 && (start[0] == '\0') != (start[1] == '\0'))) {
    return std::unexpected{"expected UTF-8 text, found UTF-16"};
  }
  return text;
}

std::expected<std::vector<std::string>, std::string> scenarioFiles(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_directory(path, error)) return std::vector{path};
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator{path, error}) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path().string());
  }
  if (error) return std::unexpected{"cannot be read: " + error.message()};
  if (files.empty()) return std::unexpected{"expected scenarios, found a folder without any .txt"};
  std::ranges::sort(files);
  return files;
}

}  // namespace keyrow::sim
