# Tests the macOS bundle's configure-time checks with the functions the build itself calls.
# cmake -P tests/cmake/VendelMacBundleTest.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/VendelMacBundle.cmake)

set(failures 0)
set(key "O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0A=")
set(feed "https://updates.vendel.org/music-plugin/appcast.xml")
set(placeholder "https://updates.vendel.invalid/music-plugin/appcast.xml")

# expect_settings(<ok|refused> <test name> <arguments of vendel_updater_settings_problem>...)
function(expect_settings expectation name)
    vendel_updater_settings_problem(problem ${ARGN})
    if(expectation STREQUAL "ok" AND NOT problem STREQUAL "")
        message(SEND_ERROR "${name}: refused: ${problem}")
    elseif(expectation STREQUAL "refused" AND problem STREQUAL "")
        message(SEND_ERROR "${name}: accepted")
    endif()
endfunction()

function(expect_qt expectation version)
    vendel_macos_qt_version_problem(problem ${version})
    if(expectation STREQUAL "ok" AND NOT problem STREQUAL "")
        message(SEND_ERROR "Qt ${version}: refused: ${problem}")
    elseif(expectation STREQUAL "refused" AND NOT problem MATCHES "QTBUG-134316")
        message(SEND_ERROR "Qt ${version}: not refused for QTBUG-134316: \"${problem}\"")
    endif()
endfunction()

# A release needs a real feed and a key.
expect_settings(ok releaseWithRealFeedAndKey RELEASE ON FEED_URL ${feed} PUBLIC_KEY ${key})
expect_settings(refused releaseWithPlaceholderFeed RELEASE ON FEED_URL ${placeholder} PUBLIC_KEY ${key})
expect_settings(refused releaseWithoutFeed RELEASE ON FEED_URL "" PUBLIC_KEY ${key})
expect_settings(refused releaseWithoutKey RELEASE ON FEED_URL ${feed} PUBLIC_KEY "")
expect_settings(refused releaseWithPlainHttpFeed RELEASE ON FEED_URL "http://updates.vendel.org/appcast.xml"
                PUBLIC_KEY ${key})
expect_settings(refused releaseWithFeedUnderInvalidInCapitals RELEASE ON
                FEED_URL "https://Updates.Vendel.INVALID./appcast.xml" PUBLIC_KEY ${key})
expect_settings(refused releaseWithExampleFeed RELEASE ON FEED_URL "https://updates.example.org/appcast.xml"
                PUBLIC_KEY ${key})
expect_settings(refused releaseWithLocalFeed RELEASE ON FEED_URL "https://localhost:8443/appcast.xml"
                PUBLIC_KEY ${key})
expect_settings(refused releaseWithFeedWithoutHost RELEASE ON FEED_URL "https:///appcast.xml" PUBLIC_KEY ${key})
expect_settings(ok releaseWithPortAndUserInFeed RELEASE ON FEED_URL "https://ci@updates.vendel.org:8443/a.xml"
                PUBLIC_KEY ${key})
# A host whose name merely ends in the letters of a reserved one is real.
expect_settings(ok releaseWithHostEndingInTest RELEASE ON FEED_URL "https://updates.contest/appcast.xml"
                PUBLIC_KEY ${key})

# The key is base64 of exactly 32 bytes, in release and development builds alike.
expect_settings(refused keyOf31Bytes RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY "O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qVw==")
expect_settings(refused keyOf33Bytes RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY "O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0AA")
expect_settings(refused keyWithoutPadding RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY "O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0A")
expect_settings(refused keyWithALetterOutsideBase64 RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY "O3gyXaE4XbmB-ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0A=")
# The last digit of 32 bytes holds four bits and two zero bits: "V0B=" is no encoding of any 32 bytes.
expect_settings(refused keyWithNonZeroPaddingBits RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY "O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0B=")
expect_settings(refused keyWithASpace RELEASE OFF FEED_URL ${placeholder}
                PUBLIC_KEY " O3gyXaE4XbmB/ckNk+S9ZGJ6vG/G5vIqn8Jk8w9qV0A=")

# A development build may use a throwaway key and the placeholder feed, but still needs a key and https.
expect_settings(ok developmentWithPlaceholderFeed RELEASE OFF FEED_URL ${placeholder} PUBLIC_KEY ${key})
expect_settings(refused developmentWithoutKey RELEASE OFF FEED_URL ${placeholder} PUBLIC_KEY "")
expect_settings(refused developmentWithPlainHttpFeed RELEASE OFF FEED_URL "http://updates.vendel.invalid/a.xml"
                PUBLIC_KEY ${key})

# The check the build calls stops a release configuration, and lets a development one say what it is.
foreach(release ON OFF)
    execute_process(COMMAND ${CMAKE_COMMAND} -DRELEASE=${release} -DFEED=${placeholder} -DKEY=${key}
                            -P ${CMAKE_CURRENT_LIST_DIR}/VendelMacBundleCheck.cmake
                    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(release AND (status EQUAL 0 OR NOT errors MATCHES "real update feed"))
        message(SEND_ERROR "A release with the placeholder feed configured (${status}): ${output}${errors}")
    elseif(NOT release AND (NOT status EQUAL 0 OR NOT output MATCHES "Development build"))
        message(SEND_ERROR "A development build did not say so (${status}): ${output}${errors}")
    endif()
endforeach()

# QTBUG-134316: Qt 6.8.0 to 6.8.2 lose the launch URL on macOS.
expect_qt(ok 6.5.3)
expect_qt(ok 6.7.3)
expect_qt(refused 6.8.0)
expect_qt(refused 6.8.1)
expect_qt(refused 6.8.2)
expect_qt(ok 6.8.3)
expect_qt(ok 6.9.0)
expect_qt(ok 6.9.3)

# The minimum macOS as the compile check compares it.
function(expect_version_number version expected)
    vendel_macos_version_number(${version} number)
    if(NOT number EQUAL expected)
        message(SEND_ERROR "${version} became ${number}, not ${expected}")
    endif()
endfunction()
expect_version_number(12.0 1200)
expect_version_number(10.15 1015)
expect_version_number(13 1300)
