# The Debian packages, made by `cpack -G DEB` from one build: vendel-music-plugin, vendel-host, and the SDK's
# libvendelsdk1, libvendelsdk-widgets1 and libvendelsdk-dev. Each gets its copyright and changelog, the programs
# their manual pages (made from their --help by help2man). Dependencies on the system's libraries come from
# dpkg-shlibdeps; CPack runs it with missing information ignored, so those on the SDK's own packages, which are
# not installed when they are made, are written here, and scripts/check-packages checks them against what the
# packages' files link.
include(GNUInstallDirs)

find_program(VENDEL_HELP2MAN help2man REQUIRED)
find_program(VENDEL_GZIP gzip REQUIRED)

# vendel_package_copyright(<component> <package>): the copyright file and the changelog that every package has.
function(vendel_package_copyright component package)
    set(folder ${PROJECT_BINARY_DIR}/packaging/${package})
    set(PACKAGE ${package})
    set(VERSION ${PROJECT_VERSION}-1)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in ${folder}/changelog.Debian @ONLY)
    add_custom_command(OUTPUT ${folder}/changelog.Debian.gz
        COMMAND ${VENDEL_GZIP} -9nkf ${folder}/changelog.Debian
        DEPENDS ${folder}/changelog.Debian
        VERBATIM)
    add_custom_target(${package}-changelog ALL DEPENDS ${folder}/changelog.Debian.gz)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${folder}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endfunction()

# vendel_package_docs(<component> <package> <program target> <summary>): a program's package: its manual page
# too, which is the program's own --help and --version, so it cannot fall behind the program.
function(vendel_package_docs component package program summary)
    set(folder ${PROJECT_BINARY_DIR}/packaging/${package})
    set(page ${folder}/${package}.1)
    add_custom_command(OUTPUT ${page}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
                ${VENDEL_HELP2MAN} --no-info --section=1 --name=${summary} --output=${page}
                $<TARGET_FILE:${program}>
        COMMAND ${VENDEL_GZIP} -9nf ${page}
        DEPENDS ${program}
        VERBATIM)
    add_custom_target(${package}-docs ALL DEPENDS ${page}.gz)
    install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
    vendel_package_copyright(${component} ${package})
endfunction()

vendel_package_docs(plugin vendel-music-plugin vendel-music-plugin "play a playlist or pause for Vendel's actions")
vendel_package_docs(host vendel-host vendel-host "the reference host of Vendel plugins")
vendel_package_copyright(sdk libvendelsdk1)
vendel_package_copyright(sdkwidgets libvendelsdk-widgets1)
vendel_package_copyright(sdkdev libvendelsdk-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vendel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Vendel Music authors")
set(CPACK_PACKAGE_CONTACT "The Vendel Music authors <maintainers@vendel.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL plugin host sdk sdkwidgets sdkdev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# dpkg-shlibdeps must find the SDK's libraries, which no package of the system holds yet: in the build tree.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Every package of the run has the run's version, as every binary package of one Debian source has; the SDK's
# own version (VENDELSDK_VERSION) is its libraries' and its CMake package's.
set(vendel_package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
# What a package that links an SDK library depends on, as the library's shlibs file says (">=" its version).
# Packages that hold a versioned library (the SDK's runtime packages) get a shlibs file.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(vendel_sdk_runtime_dependency "libvendelsdk1 (>= ${vendel_package_version})")
set(vendel_sdk_widgets_runtime_dependency "libvendelsdk-widgets1 (>= ${vendel_package_version})")

set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME vendel-music-plugin)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION sound)
# Its core links libvendelsdk, its windowed module libvendelsdk-widgets.
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS "${vendel_sdk_runtime_dependency}, ${vendel_sdk_widgets_runtime_dependency}")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_RECOMMENDS "vendel-host, mpd")
set(CPACK_COMPONENT_PLUGIN_DESCRIPTION "music plugin of the Vendel launcher
Each action of the plugin either plays one of your playlists, with shuffle
switched on or off, or pauses playback. Vendel runs an action by opening a
vendelplugin:// URL, and opens the action's editor the same way.

The plugin drives MPD, or a media player that offers MPRIS playlists.")

set(CPACK_DEBIAN_HOST_PACKAGE_NAME vendel-host)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_HOST_DESCRIPTION "reference host of Vendel plugins
A small host that keeps the actions of Vendel plugins, their titles and their
settings, installs plugins, starts them with their launch URLs, and carries
out the vendel:// command URLs that plugins open. Its actions can be picked
from a dmenu-like menu. The session bus starts it when a plugin first calls
it, and it never waits for a plugin it starts there.")

# The SDK's runtime packages, one per SONAME, each with its shlibs file and its trigger of the linker's cache;
# and the development package, which holds everything a plugin's author builds with.
set(vendel_ldconfig_trigger ${PROJECT_SOURCE_DIR}/packaging/debian/shared-library/triggers)
set(CPACK_DEBIAN_SDK_PACKAGE_NAME libvendelsdk${VENDELSDK_VERSION_MAJOR})
set(CPACK_DEBIAN_SDK_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_SDK_PACKAGE_CONTROL_EXTRA ${vendel_ldconfig_trigger})
# The host commands that plugins send are opened with xdg-open.
set(CPACK_DEBIAN_SDK_PACKAGE_RECOMMENDS "xdg-utils")
set(CPACK_COMPONENT_SDK_DESCRIPTION "SDK of Vendel plugins
The library that plugins of the Vendel launcher are built on: it parses the
launch URLs that the host opens and dispatches them to the plugin's handlers,
checks at start whether the host launched the plugin, installs it into the
host, talks to the host, keeps each action's configuration in the host with
coalesced writes, and sends commands to the host by URL.")

set(CPACK_DEBIAN_SDKWIDGETS_PACKAGE_NAME libvendelsdk-widgets${VENDELSDK_VERSION_MAJOR})
set(CPACK_DEBIAN_SDKWIDGETS_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_SDKWIDGETS_PACKAGE_CONTROL_EXTRA ${vendel_ldconfig_trigger})
# It links libvendelsdk.
set(CPACK_DEBIAN_SDKWIDGETS_PACKAGE_DEPENDS "${vendel_sdk_runtime_dependency}")
set(CPACK_COMPONENT_SDKWIDGETS_DESCRIPTION "windows of Vendel plugins
The part of the SDK of Vendel plugins that windowed plugins use: alerts as
message boxes, the application's list of windows, and the level at which a
plugin's windows stay above others.")

set(CPACK_DEBIAN_SDKDEV_PACKAGE_NAME libvendelsdk-dev)
set(CPACK_DEBIAN_SDKDEV_PACKAGE_SECTION libdevel)
# The headers, the link names and the CMake package are for exactly the libraries of this version.
set(CPACK_DEBIAN_SDKDEV_PACKAGE_DEPENDS
    "libvendelsdk${VENDELSDK_VERSION_MAJOR} (= ${vendel_package_version}), libvendelsdk-widgets${VENDELSDK_VERSION_MAJOR} (= ${vendel_package_version}), qt6-base-dev")
# vendel_add_plugin renders a plugin's icons with rsvg-convert; pkg-config reads the .pc files.
set(CPACK_DEBIAN_SDKDEV_PACKAGE_SUGGESTS "librsvg2-bin, pkgconf")
set(CPACK_COMPONENT_SDKDEV_DESCRIPTION "SDK of Vendel plugins - development files
The headers, the CMake package (find_package(VendelSDK 1), with the targets
VendelSDK::Core, VendelSDK::Widgets and VendelSDK::Testing and the function
vendel_add_plugin, which makes a plugin's executable, desktop entry or macOS
bundle) and the pkg-config files (vendelsdk, vendelsdk-widgets,
vendelsdk-testing) of the SDK that plugins of the Vendel launcher are built on.
.
The test kit (libvendelsdk-testing.a) lets a plugin's Qt tests run without a
host, a display or the real clock: virtual time for the delayed write, a
scripted host that answers and records the host's commands, recorded alerts,
and application services that deliver launch URLs and termination.")

include(CPack)
