# Refuses what Keyrow cannot be built with, and says what to give instead. Needs nothing but
# the variables, so `cmake -P` can run it, too.

foreach(architecture IN LISTS CMAKE_OSX_ARCHITECTURES)
  if(NOT architecture MATCHES "^(arm64|x86_64)$")
    message(FATAL_ERROR "Keyrow does not know the architecture \"${architecture}\". "
      "Configure with -DCMAKE_OSX_ARCHITECTURES=arm64, =x86_64, or \"=arm64;x86_64\" for both.")
  endif()
endforeach()

if(CMAKE_OSX_DEPLOYMENT_TARGET)
  if(NOT CMAKE_OSX_DEPLOYMENT_TARGET MATCHES "^[0-9]+(\\.[0-9]+)?(\\.[0-9]+)?$"
      OR CMAKE_OSX_DEPLOYMENT_TARGET VERSION_LESS 13.0)
    message(FATAL_ERROR "Keyrow cannot be built for macOS \"${CMAKE_OSX_DEPLOYMENT_TARGET}\". "
      "Configure with -DCMAKE_OSX_DEPLOYMENT_TARGET=13.0 or newer.")
  endif()
endif()

if(NOT KEYROW_VERSION MATCHES "^[0-9]+\\.[0-9]+(\\.[0-9]+)?$")
  message(FATAL_ERROR "\"${KEYROW_VERSION}\" is not a version. Set KEYROW_VERSION in CMakeLists.txt "
    "to two or three numbers with dots between them, such as 1.2 or 1.2.3.")
endif()

if(NOT "${KEYROW_BUILD}" MATCHES "^([1-9][0-9]*)?$")
  message(FATAL_ERROR "\"${KEYROW_BUILD}\" is not a build number. Configure with "
    "-DKEYROW_BUILD=NUMBER, or with -DKEYROW_BUILD= to count the commits.")
endif()

if(DEFINED KEYROW_SUPPORT_ADDRESS AND NOT KEYROW_SUPPORT_ADDRESS MATCHES "^[^@ \"]+@[^@ \"]+$")
  message(FATAL_ERROR "\"${KEYROW_SUPPORT_ADDRESS}\" is not a mail address. Configure with "
    "-DKEYROW_SUPPORT_ADDRESS=NAME@HOST.")
endif()

if(NOT "${KEYROW_FEED_URL}" MATCHES "^(https://[^/].*)?$")
  message(FATAL_ERROR "Updates cannot come from \"${KEYROW_FEED_URL}\". Configure with "
    "-DKEYROW_FEED_URL=https://HOST/FILE.")
endif()
if(KEYROW_FEED_URL AND NOT KEYROW_SPARKLE_PUBLIC_KEY)
  message(FATAL_ERROR "Updates from ${KEYROW_FEED_URL} would not be accepted without the key that "
    "proves them. Configure with -DKEYROW_SPARKLE_PUBLIC_KEY=KEY, too; Sparkle's generate_keys "
    "makes one.")
endif()
string(LENGTH "${KEYROW_SPARKLE_PUBLIC_KEY}" keyrow_key_length)
if(NOT "${KEYROW_SPARKLE_PUBLIC_KEY}" MATCHES "^([A-Za-z0-9+/]+=)?$"
    OR NOT keyrow_key_length MATCHES "^(0|44)$")
  message(FATAL_ERROR "\"${KEYROW_SPARKLE_PUBLIC_KEY}\" is not a public key. Configure with "
    "-DKEYROW_SPARKLE_PUBLIC_KEY=KEY, the 44 characters that Sparkle's generate_keys prints.")
endif()
