# The Debian packages, made by `cpack -G DEB` from one build: vendel-music-plugin and vendel-host. Each
# gets its manual page (made from its --help by help2man), copyright and changelog; dependencies come from
# the shared libraries (dpkg-shlibdeps), never from a hand-kept list.
include(GNUInstallDirs)

find_program(VENDEL_HELP2MAN help2man REQUIRED)
find_program(VENDEL_GZIP gzip REQUIRED)

# vendel_package_docs(<component> <package> <program target> <summary>)
function(vendel_package_docs component package program summary)
    set(folder ${PROJECT_BINARY_DIR}/packaging/${package})
    set(page ${folder}/${package}.1)
    # The manual page is the program's own --help and --version, so it cannot fall behind the program.
    add_custom_command(OUTPUT ${page}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
                ${VENDEL_HELP2MAN} --no-info --section=1 --name=${summary} --output=${page}
                $<TARGET_FILE:${program}>
        COMMAND ${VENDEL_GZIP} -9nf ${page}
        DEPENDS ${program}
        VERBATIM)
    set(PACKAGE ${package})
    set(VERSION ${PROJECT_VERSION}-1)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in ${folder}/changelog.Debian @ONLY)
    add_custom_command(OUTPUT ${folder}/changelog.Debian.gz
        COMMAND ${VENDEL_GZIP} -9nkf ${folder}/changelog.Debian
        DEPENDS ${folder}/changelog.Debian
        VERBATIM)
    add_custom_target(${package}-docs ALL DEPENDS ${page}.gz ${folder}/changelog.Debian.gz)
    install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${folder}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endfunction()

vendel_package_docs(plugin vendel-music-plugin vendel-music-plugin "play a playlist or pause for Vendel's actions")
vendel_package_docs(host vendel-host vendel-host "the reference host of Vendel plugins")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vendel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Vendel Music authors")
set(CPACK_PACKAGE_CONTACT "The Vendel Music authors <maintainers@vendel.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL plugin host)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME vendel-music-plugin)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION sound)
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

include(CPack)
