# The macOS bundle of a plugin: its minimum macOS, the updater's settings a release needs, the Qt versions it
# cannot be built with, putting what it links into the bundle, and signing it. Functions that decide return
# their finding instead of stopping, so that `cmake -P` tests call exactly what the build calls.
include_guard(GLOBAL)

set(VENDEL_MAC_BUNDLE_DIR ${CMAKE_CURRENT_LIST_DIR})

if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(VENDEL_MACOS_MINIMUM_VERSION "12.0" CACHE STRING "The oldest macOS the bundle runs on")
endif()

# vendel_macos_version_number(<version> <out>): "12.0" as 1200, "10.15" as 1015, the form the Objective-C
# compile check compares deprecations with. A version that is not one or two numbers stops the configuration.
function(vendel_macos_version_number version out)
    if(NOT version MATCHES "^([0-9]+)(\\.([0-9]+))?$")
        message(FATAL_ERROR "\"${version}\" is no macOS version (a major version, or major.minor such as 12.0).")
    endif()
    set(minor 0)
    if(CMAKE_MATCH_3)
        set(minor ${CMAKE_MATCH_3})
    endif()
    math(EXPR number "${CMAKE_MATCH_1} * 100 + ${minor}")
    set(${out} ${number} PARENT_SCOPE)
endfunction()
