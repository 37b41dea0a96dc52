# Writes a source that holds the FILES of the page, in their order.
set(source "#include <array>\n\n#include \"desk/Page.h\"\n\nnamespace keyrow::desk {\n\n")
list(LENGTH FILES count)
string(APPEND source "std::span<const PageFile> pageFiles() {\n"
  "  static constexpr std::array<PageFile, ${count}> files{{\n")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME)
  file(READ ${file} contents)
  string(APPEND source "      {\"${name}\", R\"page--(${contents})page--\"},\n")
endforeach()
string(APPEND source "  }};\n  return files;\n}\n\n}  // namespace keyrow::desk\n")
file(WRITE ${OUTPUT} "${source}")
