# vendel_add_plugin(): a Vendel plugin's executable, as every plugin needs it. Installed with the SDK's CMake
# package (find_package(VendelSDK 1) includes it) and used by this repository's music plugin.
#
# vendel_add_plugin(<target>
#     IDENTIFIER <reverse-DNS identifier>   NAME <name users see>   VERSION <version users see>
#     [BUILD <build number>] [COPYRIGHT <text>] [COMMENT <one line about the plugin>]
#     [SOURCES <file>...] [ICON <drawing.svg>] [ICON_SIZES <pixels>...] [CATEGORIES <desktop category>...]
#     [LANGUAGES <language>...] [INFO_PLIST <template>] [ENTITLEMENTS <file>] [SIGNING_IDENTITY <identity>]
#     [FRAMEWORKS <framework folder>...] [DEPLOY_LIBRARIES <target>...] [COMPONENT <component>] [NO_INSTALL])
#
# Everywhere it makes the executable <target> from SOURCES, linked with VendelSDK::Core, with its bundle
# identity: a source written here gives the SDK the identifier and the information keys (name, versions,
# copyright) before main() runs, so that makePlatformMainBundle() and Platform::mainBundle() carry them where
# the platform's bundle has none (a bare executable). It also writes the bundle's information list from
# INFO_PLIST (this folder's VendelPluginInfo.plist.in unless given), which a test may read on any platform.
#
# On Linux it writes the plugin's desktop entry, <target>.desktop, which gives the host the plugin's name and
# icon; it claims no URL scheme, since the host routes every vendelplugin:// URL to the plugin that owns its
# action. Installed (unless NO_INSTALL, into COMPONENT): the executable, the entry, the drawing as the
# scalable icon and one PNG per ICON_SIZES, rendered with rsvg-convert.
#
# On macOS it makes the application bundle: the information list (which declares the vendelplugin scheme), the
# icon (rendered from the drawing), the FRAMEWORKS embedded in Contents/Frameworks; after each build Qt, the
# SDK's libraries, uriparser and DEPLOY_LIBRARIES are deployed into it (VendelMacBundle.cmake), and the target
# <target>_sign signs it with the hardened runtime and ENTITLEMENTS (this folder's VendelPlugin.entitlements,
# which allows sending Apple events to the host, unless given). The compiler's deployment target,
# CMAKE_OSX_DEPLOYMENT_TARGET, must be set before project(): it is the bundle's minimum macOS.
#
# The target's properties VENDEL_PLUGIN_IDENTIFIER, VENDEL_PLUGIN_NAME, VENDEL_PLUGIN_VERSION,
# VENDEL_PLUGIN_BUILD, VENDEL_PLUGIN_COPYRIGHT, VENDEL_PLUGIN_INFO_PLIST, VENDEL_PLUGIN_IDENTITY_SOURCE and
# VENDEL_PLUGIN_DESKTOP_ENTRY (Linux) tell the rest of the build what was made.
include_guard(GLOBAL)
include(GNUInstallDirs)
include(${CMAKE_CURRENT_LIST_DIR}/VendelMacBundle.cmake)

set(VENDEL_PLUGIN_CMAKE_DIR ${CMAKE_CURRENT_LIST_DIR})

# vendel_plist_escape(<out> <text>): the text as it goes into a property list's XML.
function(vendel_plist_escape out text)
    string(REPLACE "&" "&amp;" text "${text}")
    string(REPLACE "<" "&lt;" text "${text}")
    string(REPLACE ">" "&gt;" text "${text}")
    set(${out} "${text}" PARENT_SCOPE)
endfunction()

# vendel_plugin_render_icon(<drawing.svg> <pixels> <output.png>): a build rule that renders the drawing at a size.
function(vendel_plugin_render_icon drawing size output)
    find_program(VENDEL_RSVG_CONVERT rsvg-convert REQUIRED)
    get_filename_component(folder ${output} DIRECTORY)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${VENDEL_RSVG_CONVERT} --width ${size} --height ${size} --output ${output} ${drawing}
        DEPENDS ${drawing}
        VERBATIM)
endfunction()

function(vendel_add_plugin target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "NO_INSTALL"
        "IDENTIFIER;NAME;VERSION;BUILD;COPYRIGHT;COMMENT;ICON;INFO_PLIST;ENTITLEMENTS;SIGNING_IDENTITY;COMPONENT"
        "SOURCES;ICON_SIZES;CATEGORIES;LANGUAGES;FRAMEWORKS;DEPLOY_LIBRARIES")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "vendel_add_plugin(${target}): unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    foreach(required IDENTIFIER NAME VERSION)
        if(NOT arg_${required})
            message(FATAL_ERROR "vendel_add_plugin(${target}) needs ${required}.")
        endif()
    endforeach()
    # The host, the bus and the bundle all take the identifier as it stands: reverse-DNS, ASCII.
    if(NOT arg_IDENTIFIER MATCHES "^[A-Za-z0-9-]+(\\.[A-Za-z0-9-]+)+$")
        message(FATAL_ERROR "vendel_add_plugin(${target}): \"${arg_IDENTIFIER}\" is no reverse-DNS identifier "
                            "(two or more dot-separated labels of letters, digits and hyphens).")
    endif()
    if(NOT DEFINED arg_BUILD)
        set(arg_BUILD 1)
    endif()
    foreach(key NAME VERSION BUILD COPYRIGHT COMMENT)
        if(arg_${key} MATCHES "[\n\r\t]")
            message(FATAL_ERROR "vendel_add_plugin(${target}): ${key} must be one line.")
        endif()
    endforeach()
    if(arg_ICON AND NOT arg_ICON MATCHES "\\.svg$")
        message(FATAL_ERROR "vendel_add_plugin(${target}): ICON must be a drawing (.svg), which every size is rendered from.")
    endif()
    if(NOT arg_INFO_PLIST)
        set(arg_INFO_PLIST ${VENDEL_PLUGIN_CMAKE_DIR}/VendelPluginInfo.plist.in)
    endif()
    if(NOT arg_ENTITLEMENTS)
        set(arg_ENTITLEMENTS ${VENDEL_PLUGIN_CMAKE_DIR}/VendelPlugin.entitlements)
    endif()
    if(NOT arg_COMPONENT)
        set(arg_COMPONENT ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
    endif()

    # The identity, compiled into the executable: C++ string literals of the values.
    set(VENDEL_PLUGIN_TARGET ${target})
    foreach(key IDENTIFIER NAME VERSION BUILD COPYRIGHT)
        string(REPLACE "\\" "\\\\" value "${arg_${key}}")
        string(REPLACE "\"" "\\\"" value "${value}")
        set(VENDEL_PLUGIN_CXX_${key} "${value}")
    endforeach()
    set(identity_source ${CMAKE_CURRENT_BINARY_DIR}/${target}_identity/${target}Identity.cpp)
    configure_file(${VENDEL_PLUGIN_CMAKE_DIR}/VendelPluginIdentity.cpp.in ${identity_source} @ONLY)

    # The information list: the bundle's on macOS, read by tests everywhere.
    foreach(key IDENTIFIER NAME VERSION BUILD COPYRIGHT)
        vendel_plist_escape(VENDEL_PLIST_${key} "${arg_${key}}")
    endforeach()
    set(VENDEL_PLIST_SHORT_VERSION "${VENDEL_PLIST_VERSION}")
    set(VENDEL_PLIST_VERSION "${VENDEL_PLIST_BUILD}")
    vendel_plist_escape(VENDEL_PLIST_EXECUTABLE "${target}")
    set(VENDEL_PLIST_ICON_FILE "")
    if(arg_ICON)
        set(VENDEL_PLIST_ICON_FILE "${target}.icns")
    endif()
    set(minimum "${VENDEL_MACOS_MINIMUM_VERSION}")
    if(APPLE)
        if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
            message(FATAL_ERROR "vendel_add_plugin(${target}): set CMAKE_OSX_DEPLOYMENT_TARGET before project() to "
                                "the oldest macOS the bundle runs on, so that the compiler builds for it.")
        endif()
        set(minimum "${CMAKE_OSX_DEPLOYMENT_TARGET}")
    endif()
    set(VENDEL_PLIST_MINIMUM_VERSION "${minimum}")
    # The languages the system may show the application in: the English keys and every shipped catalogue.
    set(VENDEL_PLIST_LOCALIZATIONS "\t\t<string>en</string>")
    foreach(language IN LISTS arg_LANGUAGES)
        string(APPEND VENDEL_PLIST_LOCALIZATIONS "\n\t\t<string>${language}</string>")
    endforeach()
    set(info_plist ${CMAKE_CURRENT_BINARY_DIR}/${target}-Info.plist)
    configure_file(${arg_INFO_PLIST} ${info_plist} @ONLY)

    set(bundle)
    set(icns)
    if(APPLE)
        vendel_check_macos_qt_version("${Qt6_VERSION}")
        set(bundle MACOSX_BUNDLE)
        if(arg_ICON)
            # An icon set rendered from the drawing, packed by the system's iconutil.
            set(iconset ${CMAKE_CURRENT_BINARY_DIR}/${target}_identity/${target}.iconset)
            set(iconset_files)
            foreach(size 16 32 128 256 512)
                math(EXPR double "${size} * 2")
                vendel_plugin_render_icon(${arg_ICON} ${size} ${iconset}/icon_${size}x${size}.png)
                vendel_plugin_render_icon(${arg_ICON} ${double} ${iconset}/icon_${size}x${size}@2x.png)
                list(APPEND iconset_files ${iconset}/icon_${size}x${size}.png ${iconset}/icon_${size}x${size}@2x.png)
            endforeach()
            set(icns ${CMAKE_CURRENT_BINARY_DIR}/${target}_identity/${target}.icns)
            add_custom_command(OUTPUT ${icns}
                COMMAND iconutil --convert icns --output ${icns} ${iconset}
                DEPENDS ${iconset_files}
                VERBATIM)
            set_source_files_properties(${icns} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
        endif()
    endif()

    add_executable(${target} ${bundle} ${arg_SOURCES} ${identity_source} ${icns})
    target_link_libraries(${target} PRIVATE VendelSDK::Core)
    set_target_properties(${target} PROPERTIES
        VENDEL_PLUGIN_IDENTIFIER "${arg_IDENTIFIER}"
        VENDEL_PLUGIN_NAME "${arg_NAME}"
        VENDEL_PLUGIN_VERSION "${arg_VERSION}"
        VENDEL_PLUGIN_BUILD "${arg_BUILD}"
        VENDEL_PLUGIN_COPYRIGHT "${arg_COPYRIGHT}"
        VENDEL_PLUGIN_INFO_PLIST ${info_plist}
        VENDEL_PLUGIN_IDENTITY_SOURCE ${identity_source})

    if(APPLE)
        set_target_properties(${target} PROPERTIES MACOSX_BUNDLE_INFO_PLIST ${info_plist})
        # What the bundle embeds travels inside it, found there through the run path; installing keeps the
        # build's run path, so it does not change (and unsign) the executable.
        set_target_properties(${target} PROPERTIES
            BUILD_WITH_INSTALL_RPATH ON
            INSTALL_RPATH "@executable_path/../Frameworks")
        foreach(framework IN LISTS arg_FRAMEWORKS)
            get_filename_component(framework_name "${framework}" NAME)
            add_custom_command(TARGET ${target} POST_BUILD
                COMMAND rm -rf "$<TARGET_BUNDLE_CONTENT_DIR:${target}>/Frameworks/${framework_name}"
                COMMAND mkdir -p "$<TARGET_BUNDLE_CONTENT_DIR:${target}>/Frameworks"
                COMMAND ditto "${framework}" "$<TARGET_BUNDLE_CONTENT_DIR:${target}>/Frameworks/${framework_name}"
                VERBATIM)
        endforeach()
        # After the frameworks are in, so that the deployment finds them there.
        set(libraries VendelSDK::Core VendelSDK::Widgets)
        if(TARGET uriparser::uriparser)
            list(APPEND libraries uriparser::uriparser)
        endif()
        vendel_macos_deploy_bundle(${target} LIBRARIES ${libraries} ${arg_DEPLOY_LIBRARIES})
        if(NOT arg_SIGNING_IDENTITY)
            set(arg_SIGNING_IDENTITY "-")
        endif()
        vendel_macos_sign_bundle(${target} ENTITLEMENTS ${arg_ENTITLEMENTS} IDENTITY "${arg_SIGNING_IDENTITY}")
        if(NOT arg_NO_INSTALL)
            install(TARGETS ${target} BUNDLE DESTINATION . COMPONENT ${arg_COMPONENT})
        endif()
        return()
    endif()

    # The desktop entry: the plugin's name and icon for the host and the desktop. Values are escaped as the
    # desktop entry format asks.
    foreach(key NAME COMMENT)
        string(REPLACE "\\" "\\\\" value "${arg_${key}}")
        set(VENDEL_DESKTOP_${key} "${value}")
    endforeach()
    set(VENDEL_DESKTOP_EXECUTABLE ${target})
    # Each further line starts with its line break, since categories hold semicolons, which a list would split.
    set(VENDEL_DESKTOP_EXTRA "")
    if(arg_COMMENT)
        string(APPEND VENDEL_DESKTOP_EXTRA "\nComment=${VENDEL_DESKTOP_COMMENT}")
    endif()
    if(arg_ICON)
        string(APPEND VENDEL_DESKTOP_EXTRA "\nIcon=${target}")
    endif()
    if(arg_CATEGORIES)
        string(APPEND VENDEL_DESKTOP_EXTRA "\nCategories=${arg_CATEGORIES};")
    endif()
    set(desktop_entry ${CMAKE_CURRENT_BINARY_DIR}/${target}.desktop)
    configure_file(${VENDEL_PLUGIN_CMAKE_DIR}/VendelPluginDesktopEntry.in ${desktop_entry} @ONLY)
    set_target_properties(${target} PROPERTIES VENDEL_PLUGIN_DESKTOP_ENTRY ${desktop_entry})

    set(icons)
    foreach(size IN LISTS arg_ICON_SIZES)
        set(icon ${CMAKE_CURRENT_BINARY_DIR}/${target}_identity/icons/hicolor/${size}x${size}/apps/${target}.png)
        vendel_plugin_render_icon(${arg_ICON} ${size} ${icon})
        list(APPEND icons ${icon})
    endforeach()
    if(icons)
        add_custom_target(${target}_icons ALL DEPENDS ${icons})
    endif()

    if(arg_NO_INSTALL)
        return()
    endif()
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${arg_COMPONENT})
    install(FILES ${desktop_entry} DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT ${arg_COMPONENT})
    if(arg_ICON)
        install(FILES ${arg_ICON} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
                RENAME ${target}.svg COMPONENT ${arg_COMPONENT})
    endif()
    foreach(size IN LISTS arg_ICON_SIZES)
        install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${target}_identity/icons/hicolor/${size}x${size}/apps/${target}.png
                DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps COMPONENT ${arg_COMPONENT})
    endforeach()
endfunction()
