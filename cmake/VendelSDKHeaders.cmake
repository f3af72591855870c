# How the SDK's libraries are made: the headers the build writes for them (export macros, version), hidden
# symbols, the SONAME and the binding of their own references. The macOS compile check writes the same headers
# with the same functions, so that the public headers compile there as they do here.
include_guard(GLOBAL)
include(GenerateExportHeader)

set(VENDELSDK_HEADERS_DIR ${CMAKE_CURRENT_LIST_DIR})

# vendelsdk_write_version_header(<file> <major.minor.patch>): <VendelSDK/Version.h>.
function(vendelsdk_write_version_header file version)
    string(REPLACE "." ";" parts ${version})
    list(GET parts 0 VENDELSDK_VERSION_MAJOR)
    list(GET parts 1 VENDELSDK_VERSION_MINOR)
    list(GET parts 2 VENDELSDK_VERSION_PATCH)
    set(VENDELSDK_VERSION ${version})
    configure_file(${VENDELSDK_HEADERS_DIR}/VendelSDKVersion.h.in ${file} @ONLY)
endfunction()

# vendelsdk_export_header(<target> <prefix> <file>): the export macros of one library, <prefix>_EXPORT and
# <prefix>_NO_EXPORT, in <file>. Everything else of the library is hidden. It also gives the deprecation
# macro, <prefix>_DEPRECATED_SINCE(major, minor, "what to use instead"), which every deprecation uses, so that
# the version that deprecated a name and its replacement are in the compiler's warning. A program that must
# build without those warnings for a while defines VENDELSDK_NO_DEPRECATION_WARNINGS.
function(vendelsdk_export_header target prefix file)
    set(deprecation "
#if defined(VENDELSDK_NO_DEPRECATION_WARNINGS)
#  define ${prefix}_DEPRECATED_SINCE(major, minor, replacement)
#else
#  define ${prefix}_DEPRECATED_SINCE(major, minor, replacement) \\
    [[deprecated(\"deprecated since VendelSDK \" #major \".\" #minor \": \" replacement)]]
#endif
")
    generate_export_header(${target}
        BASE_NAME ${prefix}
        EXPORT_MACRO_NAME ${prefix}_EXPORT
        NO_EXPORT_MACRO_NAME ${prefix}_NO_EXPORT
        DEPRECATED_MACRO_NAME ${prefix}_DEPRECATED
        INCLUDE_GUARD_NAME ${prefix}_EXPORT_H
        STATIC_DEFINE ${prefix}_STATIC_DEFINE
        EXPORT_FILE_NAME ${file}
        CUSTOM_CONTENT_FROM_VARIABLE deprecation)
endfunction()

# vendelsdk_library_code(<target>): code of an SDK library: position-independent (as Qt requires of everything
# that uses it), and hidden but for what its export header marks, inline functions included.
function(vendelsdk_library_code target)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        OBJCXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# vendelsdk_shared_library(<target> <file name> <export name>): lib<file name>.so.<major>, version
# VENDELSDK_VERSION, known as VendelSDK::<export name> to the programs that use the installed package.
#
# Loading a library costs mostly symbol lookups, one for each relocation that names a symbol, through the loaded
# objects in turn. So a library exports the names of namespace VendelSDK and nothing else: not the standard
# library's template instances, which would otherwise go out with default visibility, nor the catalogues'
# registration (vendelsdk.map); and its calls of its own functions bind within it at link time
# (-Bsymbolic-functions). Its own data (vtables, type information, meta-objects) is still looked up, so that a
# program that copies one of those objects (a position-independent executable may) and the library use the
# same copy; binding data too saved 0.05 M instructions of a run, 0.7 %.
function(vendelsdk_shared_library target file_name export_name)
    string(REGEX MATCH "^[0-9]+" major ${VENDELSDK_VERSION})
    # In the build tree where they are installed, <build>/lib/<multiarch>, beside the plugins' private folders.
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${file_name}
        VERSION ${VENDELSDK_VERSION}
        SOVERSION ${major}
        EXPORT_NAME ${export_name}
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}
        # The build tree's file is the installed one.
        BUILD_WITH_INSTALL_RPATH ON)
    vendelsdk_library_code(${target})
    if(NOT APPLE)
        # A library of the SDK finds the others beside itself: in the build tree only through its run path,
        # since a program that links libvendelsdk-widgets alone records no need of libvendelsdk; installed,
        # that is the system's folder, which the loader searches anyway. (A macOS bundle's executable gives
        # the libraries it loads its own run path.)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
        set(map ${VENDELSDK_HEADERS_DIR}/vendelsdk.map)
        target_link_options(${target} PRIVATE LINKER:-Bsymbolic-functions LINKER:--version-script=${map})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
    endif()
endfunction()
