#include "desk/Page.h"

#include <algorithm>

namespace keyrow::desk {

std::string_view pageFile(std::string_view name) {
  const auto files = pageFiles();
  const auto found = std::ranges::find(files, name, &PageFile::name);
  return found == files.end() ? std::string_view{} : found->contents;
}

}  // namespace keyrow::desk
