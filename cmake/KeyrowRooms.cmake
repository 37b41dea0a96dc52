# What every target of the house has in common.
add_library(keyrow_options INTERFACE)
target_include_directories(keyrow_options INTERFACE ${PROJECT_SOURCE_DIR})
# Clang's -Wconversion minds signs, g++'s needs to be told.
target_compile_options(keyrow_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # With -O3 g++ 12 wrongly warns of overlapping and of endless copies within std::string (GCC
  # bugs 105651 and 105329) and of uninitialised alternatives of std::variant (GCC bug 105562).
  target_compile_options(keyrow_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized
    -Wno-stringop-overflow -Wno-array-bounds)
endif()

set(KEYROW_SANITIZERS "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(KEYROW_SANITIZERS)
  target_compile_options(keyrow_options INTERFACE
    -fsanitize=${KEYROW_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(keyrow_options INTERFACE -fsanitize=${KEYROW_SANITIZERS})
endif()

option(KEYROW_FUZZERS "Build the fuzzers, and all else with what guides them; needs clang" OFF)
if(KEYROW_FUZZERS)
  target_compile_options(keyrow_options INTERFACE -fsanitize=fuzzer-no-link)
  # The standard library checks what it is given.
  target_compile_definitions(keyrow_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# keyrow_room(NAME [USES ROOM...])
#
# One library target per folder, from the sources right inside it, linked with the
# rooms that it stands on and with no others. tests/HouseTest.cpp has the arrows.
function(keyrow_room name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  string(REPLACE "/" "_" target keyrow_${name})
  list(TRANSFORM ROOM_USES PREPEND keyrow_)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${name}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  if(sources)
    add_library(${target} STATIC ${sources})
    target_link_libraries(${target} PUBLIC keyrow_options ${ROOM_USES})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE keyrow_options ${ROOM_USES})
  endif()
endfunction()
