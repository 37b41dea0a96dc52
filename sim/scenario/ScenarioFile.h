#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <vector>

namespace keyrow::sim {

/// The largest scenario file that is read, in bytes.
inline constexpr std::size_t maximumFileSize = std::size_t{16} * 1024 * 1024;

/// Reads a whole file, without its byte order mark; the error says in words why it cannot be
/// read, or that it is UTF-16.
std::expected<std::string, std::string> readScenarioFile(const std::string& path);

/// The scenario that the path names, or the paths of all in the folder that it names (the files
/// that end in .txt), in the order of their names.
std::expected<std::vector<std::string>, std::string> scenarioFiles(const std::string& path);

}  // namespace keyrow::sim
