# Builds the Mac side on Linux, for both architectures: clang 19, lld, and Apple's headers
# from the SDK folder that the environment variable MACOS_SDK names.
#
# The SDK may come without the C and C++ runtime libraries (a Mac has them), so what they
# define is left to be looked up at run time.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)

if(DEFINED ENV{MACOS_SDK})
  set(keyrow_sdk "$ENV{MACOS_SDK}")
elseif(CMAKE_OSX_SYSROOT)
  set(keyrow_sdk "${CMAKE_OSX_SYSROOT}")
else()
  set(keyrow_sdk "$ENV{HOME}/.cache/keyrow/MacOSX.sdk")
endif()
if(NOT IS_DIRECTORY "${keyrow_sdk}/usr/include")
  message(FATAL_ERROR
    "There is no macOS SDK at \"${keyrow_sdk}\": a folder with usr/include and "
    "System/Library/Frameworks is needed. Put one there, or set the environment variable "
    "MACOS_SDK to where it is, and configure again.")
endif()
set(CMAKE_OSX_SYSROOT "${keyrow_sdk}" CACHE PATH "The macOS SDK" FORCE)
set(CMAKE_FIND_ROOT_PATH "${keyrow_sdk}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(keyrow_lipo llvm-lipo-19 REQUIRED)
find_program(keyrow_libtool llvm-libtool-darwin-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)
find_program(CMAKE_AR llvm-ar-19 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-19 REQUIRED)
find_program(keyrow_compiler clang++-19 REQUIRED)
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${keyrow_compiler}")
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos)
endforeach()

# To join the architectures the compiler driver calls a program by the name of `lipo`.
set(keyrow_tools "${CMAKE_BINARY_DIR}/cross-tools")
file(MAKE_DIRECTORY "${keyrow_tools}")
file(CREATE_LINK "${keyrow_lipo}" "${keyrow_tools}/lipo" SYMBOLIC)

foreach(language CXX OBJCXX)
  set(CMAKE_${language}_FLAGS_INIT "-B${keyrow_tools}")
  # `ar` makes no index of universal objects, and the linker asks for one.
  set(CMAKE_${language}_ARCHIVE_CREATE "${keyrow_libtool} -static -o <TARGET> <OBJECTS>")
  set(CMAKE_${language}_ARCHIVE_FINISH "")
endforeach()

foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -Wl,-undefined,dynamic_lookup")
endforeach()
