#pragma once

#include <cstddef>
#include <expected>
#include <string>

namespace keyrow::sim {

/// The largest scenario file that is read, in bytes.
inline constexpr std::size_t maximumFileSize = std::size_t{1024} * 1024;

/// Reads a whole file; the error says in words why it cannot be read.
std::expected<std::string, std::string> readScenarioFile(const std::string& path);

}  // namespace keyrow::sim
