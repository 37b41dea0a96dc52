# Finds Sparkle 2, which looks for updates, or fetches its release.
#
# Sets KEYROW_SPARKLE_FRAMEWORK to the path of Sparkle.framework and KEYROW_SPARKLE_LICENSE to that
# of its licence, or both to nothing when building against an SDK that only declares it: then
# Keyrow.app has no updater inside and will not start, but everything else can be checked.

set(KEYROW_SPARKLE_DIR "" CACHE PATH
  "The folder that holds Sparkle.framework and LICENSE; empty to fetch Sparkle's release")
set(KEYROW_SPARKLE_URL "" CACHE STRING
  "Where Sparkle's release is fetched from; empty for where its makers put it")
set(keyrow_sparkle_version 2.6.4)
set(keyrow_sparkle_sha256 eb3814726816ca2f09334ce562fff1b2cd0f7c16dd4e283256081f307accb9c4)
set(keyrow_sparkle_url "${KEYROW_SPARKLE_URL}")
if(NOT keyrow_sparkle_url)
  set(keyrow_sparkle_url "https://github.com/sparkle-project/Sparkle/releases/download/\
${keyrow_sparkle_version}/Sparkle-for-Swift-Package-Manager.zip")
endif()
set(keyrow_sparkle_advice "Download Sparkle ${keyrow_sparkle_version} yourself, unpack it, and \
configure again with -DKEYROW_SPARKLE_DIR=FOLDER, where FOLDER holds Sparkle.framework and LICENSE.")

# keyrow_fetch_sparkle(FOLDER)
#
# Leaves the unpacked release in the folder.
function(keyrow_fetch_sparkle folder)
  set(archive "${folder}.zip")
  message(STATUS "Fetching Sparkle from ${keyrow_sparkle_url}")
  file(DOWNLOAD "${keyrow_sparkle_url}" "${archive}"
    STATUS status TLS_VERIFY ON INACTIVITY_TIMEOUT 60)
  list(POP_FRONT status code text)
  if(NOT code EQUAL 0)
    file(REMOVE "${archive}")
    message(FATAL_ERROR "Sparkle could not be fetched from ${keyrow_sparkle_url}: ${text}. "
      "${keyrow_sparkle_advice}")
  endif()
  file(SHA256 "${archive}" sha256)
  if(NOT sha256 STREQUAL keyrow_sparkle_sha256)
    file(REMOVE "${archive}")
    message(FATAL_ERROR "What came from ${keyrow_sparkle_url} is not Sparkle "
      "${keyrow_sparkle_version}: its SHA-256 is ${sha256} and not ${keyrow_sparkle_sha256}. "
      "${keyrow_sparkle_advice}")
  endif()
  # Under another name first, so that a half unpacked folder is never taken for a whole one.
  file(REMOVE_RECURSE "${folder}.part")
  # Apple's own tool keeps what the signatures inside cover.
  execute_process(COMMAND ditto -x -k "${archive}" "${folder}.part" COMMAND_ERROR_IS_FATAL ANY)
  file(RENAME "${folder}.part" "${folder}")
endfunction()

if(KEYROW_SPARKLE_DIR)
  set(KEYROW_SPARKLE_FRAMEWORK "${KEYROW_SPARKLE_DIR}/Sparkle.framework")
  set(KEYROW_SPARKLE_LICENSE "${KEYROW_SPARKLE_DIR}/LICENSE")
  foreach(part Sparkle.framework LICENSE)
    if(NOT EXISTS "${KEYROW_SPARKLE_DIR}/${part}")
      message(FATAL_ERROR "There is no ${part} in \"${KEYROW_SPARKLE_DIR}\". "
        "${keyrow_sparkle_advice}")
    endif()
  endforeach()
elseif(CMAKE_CROSSCOMPILING)
  set(KEYROW_SPARKLE_FRAMEWORK "")
  set(KEYROW_SPARKLE_LICENSE "")
else()
  set(keyrow_sparkle_release "${CMAKE_BINARY_DIR}/Sparkle-${keyrow_sparkle_version}")
  if(NOT EXISTS "${keyrow_sparkle_release}")
    keyrow_fetch_sparkle("${keyrow_sparkle_release}")
  endif()
  set(KEYROW_SPARKLE_FRAMEWORK
    "${keyrow_sparkle_release}/Sparkle.xcframework/macos-arm64_x86_64/Sparkle.framework")
  set(KEYROW_SPARKLE_LICENSE "${keyrow_sparkle_release}/LICENSE")
endif()
