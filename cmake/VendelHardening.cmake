# The distribution's hardening flags for the packaged build: PIE, the stack protector, full RELRO with
# BIND_NOW, and _FORTIFY_SOURCE, as dpkg-buildflags gives them to every Debian package.
#
# debhelper passes CFLAGS, CXXFLAGS and LDFLAGS to CMake through the environment, and CMake never reads
# CPPFLAGS, which is where _FORTIFY_SOURCE is; so all four are asked for here and added to every target of
# this build. Fortification needs optimisation, which the packaged build has.
function(vendel_use_distribution_hardening)
    find_program(VENDEL_DPKG_BUILDFLAGS dpkg-buildflags REQUIRED)
    foreach(kind CPPFLAGS CXXFLAGS LDFLAGS)
        # From the source folder, so that the debug information's paths are the sources' relative ones.
        execute_process(
            COMMAND ${CMAKE_COMMAND} -E env DEB_BUILD_MAINT_OPTIONS=hardening=+all
                    ${VENDEL_DPKG_BUILDFLAGS} --get ${kind}
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
            OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
            COMMAND_ERROR_IS_FATAL ANY)
        set(${kind} "${flags}")
    endforeach()
    # The preprocessor's flags go to the compiler, as debhelper gives them to CMake inside CXXFLAGS.
    foreach(language CXX OBJCXX)
        set(CMAKE_${language}_FLAGS "${CMAKE_${language}_FLAGS} ${CPPFLAGS} ${CXXFLAGS}" PARENT_SCOPE)
    endforeach()
    foreach(kind EXE SHARED MODULE)
        set(CMAKE_${kind}_LINKER_FLAGS "${CMAKE_${kind}_LINKER_FLAGS} ${LDFLAGS}" PARENT_SCOPE)
    endforeach()
    # Executables as position-independent as the libraries, whatever the compiler's default.
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON PARENT_SCOPE)
    message(STATUS "Hardening: ${CPPFLAGS} ${CXXFLAGS} ${LDFLAGS}")
endfunction()
