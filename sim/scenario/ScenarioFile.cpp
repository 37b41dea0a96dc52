#include "sim/scenario/ScenarioFile.h"

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
                           std::to_string(maximumFileSize / 1024) + " KiB, found more"};
  }
  return text;
}

}  // namespace keyrow::sim
