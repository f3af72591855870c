# What `cmake --install` puts where, by component: libvendelsdk (sdk) and libvendelsdk-widgets (sdkwidgets) in
# the runtime packages, one per SONAME; the headers, the link names, the test kit's archive, the CMake package
# with vendel_add_plugin, and the pkg-config files in the development package (sdkdev). Every path in the CMake
# package and the pkg-config files is relative to the file itself, so the installed tree may be moved (a staging
# prefix made with dpkg-deb -x, say).
include(CMakePackageConfigHelpers)

set(vendelsdk_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VendelSDK)

install(TARGETS VendelSDK EXPORT VendelSDKTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT sdk NAMELINK_COMPONENT sdkdev
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS VendelSDKWidgets EXPORT VendelSDKTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT sdkwidgets NAMELINK_COMPONENT sdkdev
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS VendelSDKTesting EXPORT VendelSDKTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT sdkdev
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/VendelSDK/include/VendelSDK
                  ${PROJECT_SOURCE_DIR}/VendelSDK/widgets/include/VendelSDK
                  ${PROJECT_SOURCE_DIR}/VendelSDK/testing/include/VendelSDK
                  ${PROJECT_BINARY_DIR}/VendelSDK/include/VendelSDK
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT sdkdev
    FILES_MATCHING PATTERN "*.h")

install(EXPORT VendelSDKTargets NAMESPACE VendelSDK:: DESTINATION ${vendelsdk_cmake_dir} COMPONENT sdkdev)
set(VENDELSDK_QT_VERSION ${Qt6_VERSION_MAJOR}.${Qt6_VERSION_MINOR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/VendelSDKConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/VendelSDKConfig.cmake
    INSTALL_DESTINATION ${vendelsdk_cmake_dir}
    NO_SET_AND_CHECK_MACRO)
# A plugin built against 1.x runs with any later 1.x: the major version is the SONAME's.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/VendelSDKConfigVersion.cmake
    VERSION ${VENDELSDK_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/VendelSDKConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/VendelSDKConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/VendelPlugin.cmake
              ${PROJECT_SOURCE_DIR}/cmake/VendelPluginDesktopEntry.in
              ${PROJECT_SOURCE_DIR}/cmake/VendelPluginInfo.plist.in
              ${PROJECT_SOURCE_DIR}/cmake/VendelPluginIdentity.cpp.in
              ${PROJECT_SOURCE_DIR}/cmake/VendelPlugin.entitlements
              ${PROJECT_SOURCE_DIR}/cmake/VendelMacBundle.cmake
              ${PROJECT_SOURCE_DIR}/cmake/VendelMacSign.cmake
    DESTINATION ${vendelsdk_cmake_dir} COMPONENT sdkdev)

# pkg-config: the prefix is found from the file's own folder.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH VENDELSDK_PC_PREFIX_FROM_PCFILEDIR ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" VENDELSDK_PC_PREFIX_FROM_PCFILEDIR "${VENDELSDK_PC_PREFIX_FROM_PCFILEDIR}")
foreach(pc vendelsdk vendelsdk-widgets vendelsdk-testing)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${pc}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${pc}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${pc}.pc DESTINATION ${pkgconfig_dir} COMPONENT sdkdev)
endforeach()

# The reference, in the development package's documentation folder, when this build makes it.
if(VENDELSDK_REFERENCE)
    install(DIRECTORY ${VENDELSDK_REFERENCE_DIR}/html/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libvendelsdk-dev/reference COMPONENT sdkdev)
endif()

# The template of a new plugin, and the program that makes a project from it (vendelsdk-new-plugin), which
# finds the template relative to itself, so that it works wherever the package was unpacked. Its manual page
# is its own --help.
configure_file(${PROJECT_SOURCE_DIR}/VendelSDK/template/vendelsdk-new-plugin
    ${PROJECT_BINARY_DIR}/bin/vendelsdk-new-plugin @ONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(PROGRAMS ${PROJECT_BINARY_DIR}/bin/vendelsdk-new-plugin
    DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT sdkdev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/VendelSDK/template/project/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/vendelsdk/template COMPONENT sdkdev)
find_program(VENDELSDK_HELP2MAN help2man)
find_program(VENDELSDK_GZIP gzip)
if(VENDELSDK_HELP2MAN AND VENDELSDK_GZIP)
    set(vendelsdk_new_plugin_page ${PROJECT_BINARY_DIR}/packaging/libvendelsdk-dev/vendelsdk-new-plugin.1)
    add_custom_command(OUTPUT ${vendelsdk_new_plugin_page}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packaging/libvendelsdk-dev
        COMMAND ${VENDELSDK_HELP2MAN} --no-info --section=1 "--name=make a new Vendel plugin project"
                --output=${vendelsdk_new_plugin_page} ${PROJECT_BINARY_DIR}/bin/vendelsdk-new-plugin
        COMMAND ${VENDELSDK_GZIP} -9nf ${vendelsdk_new_plugin_page}
        DEPENDS ${PROJECT_BINARY_DIR}/bin/vendelsdk-new-plugin
        VERBATIM)
    add_custom_target(vendelsdk-new-plugin-page ALL DEPENDS ${vendelsdk_new_plugin_page}.gz)
    install(FILES ${vendelsdk_new_plugin_page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT sdkdev)
endif()

# The guide from the template to an installed plugin, beside the reference.
install(FILES ${PROJECT_SOURCE_DIR}/docs/writing-a-plugin.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libvendelsdk-dev COMPONENT sdkdev)
