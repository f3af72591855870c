# Signs a macOS bundle inside out with the hardened runtime: the updater framework's helpers as its
# documentation orders them, every other framework, library and plug-in, then the application with its
# entitlements; then verifies the whole bundle strictly, as the system checks it.
# cmake -DBUNDLE=<app> [-DIDENTITY=<identity>] [-DENTITLEMENTS=<file>] -P VendelMacSign.cmake
# The identity "-" (the default) signs ad hoc, which runs on this Mac but cannot be notarised.
cmake_minimum_required(VERSION 3.25)

if(NOT IS_DIRECTORY "${BUNDLE}/Contents/MacOS")
    message(FATAL_ERROR "\"${BUNDLE}\" is no application bundle.")
endif()
if(NOT IDENTITY)
    set(IDENTITY "-")
endif()
set(options --force --options runtime --sign "${IDENTITY}")
# Notarisation asks for a secure timestamp; an ad hoc signature cannot have one.
if(NOT IDENTITY STREQUAL "-")
    list(APPEND options --timestamp)
endif()

function(vendel_sign path)
    execute_process(COMMAND codesign ${options} ${ARGN} "${path}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(frameworks "${BUNDLE}/Contents/Frameworks")
set(sparkle "${frameworks}/Sparkle.framework")
if(IS_DIRECTORY "${sparkle}")
    set(version "${sparkle}/Versions/B")
    vendel_sign("${version}/XPCServices/Installer.xpc")
    # The downloader keeps the entitlements it was built with.
    vendel_sign("${version}/XPCServices/Downloader.xpc" --preserve-metadata=entitlements)
    vendel_sign("${version}/Autoupdate")
    vendel_sign("${version}/Updater.app")
    vendel_sign("${sparkle}")
endif()

# Nested code first: every library, those inside frameworks included, then each framework, which seals
# what it holds; the application, which seals everything, last.
file(GLOB_RECURSE libraries LIST_DIRECTORIES false "${frameworks}/*.dylib" "${BUNDLE}/Contents/PlugIns/*.dylib")
foreach(library IN LISTS libraries)
    vendel_sign("${library}")
endforeach()
file(GLOB bundled_frameworks LIST_DIRECTORIES true "${frameworks}/*.framework")
list(REMOVE_ITEM bundled_frameworks "${sparkle}")
foreach(framework IN LISTS bundled_frameworks)
    vendel_sign("${framework}")
endforeach()

if(ENTITLEMENTS)
    vendel_sign("${BUNDLE}" --entitlements "${ENTITLEMENTS}")
else()
    vendel_sign("${BUNDLE}")
endif()
execute_process(COMMAND codesign --verify --deep --strict --verbose=2 "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
