# The macOS bundle of a plugin: its minimum macOS, the updater's settings a release needs, the Qt versions it
# cannot be built with, putting what it links into the bundle, and signing it. The checks report their finding
# through a variable instead of stopping, so that `cmake -P` tests call exactly what the build calls.
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

# vendel_macos_deployment_target(): before project(), makes the minimum macOS the compiler's deployment target,
# so that every object the build makes says it runs there. A deployment target given apart from it must agree.
macro(vendel_macos_deployment_target)
    if(CMAKE_HOST_APPLE)
        if(DEFINED CMAKE_OSX_DEPLOYMENT_TARGET AND NOT CMAKE_OSX_DEPLOYMENT_TARGET STREQUAL ""
           AND NOT CMAKE_OSX_DEPLOYMENT_TARGET VERSION_EQUAL VENDEL_MACOS_MINIMUM_VERSION)
            message(FATAL_ERROR "CMAKE_OSX_DEPLOYMENT_TARGET (${CMAKE_OSX_DEPLOYMENT_TARGET}) differs from "
                "VENDEL_MACOS_MINIMUM_VERSION (${VENDEL_MACOS_MINIMUM_VERSION}); set only the latter.")
        endif()
        set(CMAKE_OSX_DEPLOYMENT_TARGET "${VENDEL_MACOS_MINIMUM_VERSION}")
    endif()
endmacro()

# vendel_updater_settings_problem(<out> RELEASE <bool> FEED_URL <url> PUBLIC_KEY <key>): what keeps these
# settings from making a working updater, or the empty text. The public key is always checked: base64 of
# exactly 32 bytes, as Sparkle's generate_keys prints it, since a malformed one keeps the updater from
# starting. A release also needs a real feed: https, on a host that is not one of the names reserved for
# examples and tests (RFC 2606, RFC 6761), such as the placeholder under .invalid.
function(vendel_updater_settings_problem out)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "RELEASE;FEED_URL;PUBLIC_KEY" "")
    set(problem "")
    # 32 bytes are 43 base64 digits and one "=": the last digit holds 4 bits and two zero bits.
    string(REPEAT "[A-Za-z0-9+/]" 42 digits)
    set(key_form "^${digits}[AEIMQUYcgkosw048]=$")
    string(REGEX REPLACE "^https://([^/?#]*).*$" "\\1" authority "${arg_FEED_URL}")
    string(REGEX REPLACE "^.*@" "" host "${authority}")
    string(REGEX REPLACE ":[0-9]*$" "" host "${host}")
    string(TOLOWER "${host}" host)
    string(REGEX REPLACE "\\.$" "" host "${host}")
    if(arg_PUBLIC_KEY STREQUAL "")
        string(CONCAT problem "The updater's public EdDSA key is missing: make a key pair with Sparkle's "
               "bin/generate_keys and configure with -DVENDEL_SPARKLE_PUBLIC_ED_KEY=<public key>.")
    elseif(NOT arg_PUBLIC_KEY MATCHES "${key_form}")
        string(CONCAT problem "The updater's public EdDSA key \"${arg_PUBLIC_KEY}\" is not base64 of 32 bytes "
               "(44 characters ending in one \"=\"), as Sparkle's bin/generate_keys prints it.")
    elseif(NOT arg_FEED_URL MATCHES "^https://[^/?#]+(/[^ \t\r\n]*)?$")
        string(CONCAT problem "The update feed \"${arg_FEED_URL}\" is no https address; the updater reads its "
               "feed over https only (VENDEL_SPARKLE_FEED_URL).")
    elseif(arg_RELEASE AND (host STREQUAL "" OR host MATCHES "(^|\\.)(invalid|test|example|localhost)$"
                            OR host MATCHES "(^|\\.)example\\.(com|net|org)$"))
        string(CONCAT problem "A release needs the real update feed, not \"${arg_FEED_URL}\": configure with "
               "-DVENDEL_SPARKLE_FEED_URL=https://<your server>/appcast.xml.")
    endif()
    set(${out} "${problem}" PARENT_SCOPE)
endfunction()

# vendel_check_updater_settings(RELEASE <bool> FEED_URL <url> PUBLIC_KEY <key>): stops the configuration on
# a problem; a development build says that it is one, and that its bundle can find no update there.
function(vendel_check_updater_settings)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "RELEASE;FEED_URL;PUBLIC_KEY" "")
    vendel_updater_settings_problem(problem ${ARGN})
    if(problem)
        message(FATAL_ERROR "${problem}")
    endif()
    if(NOT arg_RELEASE)
        message(STATUS "Development build of the macOS bundle (VENDEL_RELEASE is OFF): its updater reads "
                       "${arg_FEED_URL} and accepts only updates signed for the key it was given, which may be a "
                       "throwaway one. A release (-DVENDEL_RELEASE=ON) refuses to configure without the real feed.")
    endif()
endfunction()

# vendel_macos_qt_version_problem(<out> <version>): why the Qt of that version cannot make the macOS bundle, or
# the empty text.
#
# QTBUG-134316, "[Reg] QFileOpenEvent isn't emitted for custom URI": since Qt 6.8.0 handles custom URL schemes
# on macOS itself ("macOS: Added support for custom uri scheme handling" in 6.8.0's notes), a URL of the
# application's own scheme that another application opens no longer reaches it as a file-open event, and
# applications with a URL handler for the scheme reported losing it too. Nothing ties it to a modal alert:
# every launch URL is at stake. Qt's release notes list the fix in 6.8.3 and 6.9.0 (and the report again, for
# a further change, in 6.8.4 and 6.9.1).
function(vendel_macos_qt_version_problem out version)
    set(problem "")
    if(version VERSION_GREATER_EQUAL 6.8.0 AND version VERSION_LESS 6.8.3)
        string(CONCAT problem "Qt ${version} loses the launch URLs that the host sends on macOS (QTBUG-134316, "
               "\"[Reg] QFileOpenEvent isn't emitted for custom URI\", in Qt 6.8.0 to 6.8.2). Build with Qt 6.8.3 "
               "or later, or with Qt 6.7.")
    endif()
    set(${out} "${problem}" PARENT_SCOPE)
endfunction()

# vendel_check_macos_qt_version(<version>): stops the configuration with a Qt that cannot make the bundle.
function(vendel_check_macos_qt_version version)
    vendel_macos_qt_version_problem(problem "${version}")
    if(problem)
        message(FATAL_ERROR "${problem}")
    endif()
endfunction()

# vendel_macos_deploy_bundle(<target> [LIBRARIES <target>...] [LIBRARY_DIRS <dir>...]): after each build of
# <target>'s bundle, puts what it needs from outside the system into it with Qt's macdeployqt: the Qt
# frameworks and plug-ins (the cocoa platform plug-in among them) and every other library it links, each
# load command pointed inside the bundle. Libraries that the executable finds only through a run path are
# looked for in LIBRARY_DIRS and in the folders of the shared LIBRARIES (the SDK's, say). Add it after any
# step that copies frameworks into the bundle, so that those are found there.
function(vendel_macos_deploy_bundle target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;LIBRARY_DIRS")
    find_program(VENDEL_MACDEPLOYQT macdeployqt HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" REQUIRED)
    set(search)
    foreach(dir IN LISTS arg_LIBRARY_DIRS)
        list(APPEND search "-libpath=${dir}")
    endforeach()
    foreach(library IN LISTS arg_LIBRARIES)
        set(shared "$<STREQUAL:$<TARGET_PROPERTY:${library},TYPE>,SHARED_LIBRARY>")
        list(APPEND search "$<${shared}:-libpath=$<TARGET_FILE_DIR:${library}>>")
    endforeach()
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${VENDEL_MACDEPLOYQT} "$<TARGET_BUNDLE_DIR:${target}>" -always-overwrite -verbose=1 ${search}
        COMMAND_EXPAND_LISTS VERBATIM)
endfunction()

# vendel_macos_sign_bundle(<target> ENTITLEMENTS <file> [IDENTITY <identity>]): the target <target>_sign,
# which signs the deployed bundle inside out with the hardened runtime and verifies it as the system will
# (VendelMacSign.cmake). The identity "-", the default, signs ad hoc: the bundle runs on this Mac, but
# Gatekeeper rejects it elsewhere.
function(vendel_macos_sign_bundle target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "ENTITLEMENTS;IDENTITY" "")
    if(NOT arg_IDENTITY)
        set(arg_IDENTITY "-")
    endif()
    add_custom_target(${target}_sign
        COMMAND ${CMAKE_COMMAND} "-DBUNDLE=$<TARGET_BUNDLE_DIR:${target}>" "-DIDENTITY=${arg_IDENTITY}"
                "-DENTITLEMENTS=${arg_ENTITLEMENTS}" -P ${VENDEL_MAC_BUNDLE_DIR}/VendelMacSign.cmake
        DEPENDS ${target}
        COMMENT "Signing $<TARGET_BUNDLE_DIR_NAME:${target}>"
        VERBATIM)
endfunction()
