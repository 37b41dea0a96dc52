# What Keyrow.app says of itself: sets the variables that packaging/Info.plist.in uses.

set(KEYROW_BUILD "" CACHE STRING "CFBundleVersion; empty to count the commits")
set(KEYROW_FEED_URL "" CACHE STRING
  "SUFeedURL, where Sparkle looks for updates; empty for an application without any")
set(KEYROW_SPARKLE_PUBLIC_KEY "" CACHE STRING
  "SUPublicEDKey, which proves that an update is ours")

set(keyrow_build "${KEYROW_BUILD}")
if(NOT keyrow_build)
  execute_process(COMMAND git rev-list --count HEAD
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    OUTPUT_VARIABLE keyrow_build OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET
    RESULT_VARIABLE keyrow_git_failed)
  if(keyrow_git_failed)
    message(WARNING "There are no commits to count here, so this is build 1. "
      "Configure with -DKEYROW_BUILD=NUMBER for another.")
    set(keyrow_build 1)
  endif()
endif()

# keyrow_update_entry(KEY VALUE)
#
# Adds an entry to Info.plist, unless the value is empty.
set(keyrow_update_entries "")
macro(keyrow_update_entry key value)
  if(NOT "${value}" STREQUAL "")
    string(REPLACE "&" "&amp;" keyrow_value "${value}")
    string(REPLACE "<" "&lt;" keyrow_value "${keyrow_value}")
    string(APPEND keyrow_update_entries
      "  <key>${key}</key>\n  <string>${keyrow_value}</string>\n")
  endif()
endmacro()
keyrow_update_entry(SUFeedURL "${KEYROW_FEED_URL}")
keyrow_update_entry(SUPublicEDKey "${KEYROW_SPARKLE_PUBLIC_KEY}")
