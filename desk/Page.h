#pragma once

#include <span>
#include <string_view>

namespace keyrow::desk {

/// A file of the page, as it was when this was built.
struct PageFile {
  /// Without a folder, such as "desk.css".
  std::string_view name;
  std::string_view contents;
};

/// All of them. The modules come in an order in which each stands behind those that it imports.
std::span<const PageFile> pageFiles();

/// The contents of the file of that name, which is one of them.
std::string_view pageFile(std::string_view name);

}  // namespace keyrow::desk
