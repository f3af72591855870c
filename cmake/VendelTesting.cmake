# vendel_add_test(<Class> SOURCES ... [LIBS ...] [DBUS]): one Qt Test executable per class, named as the class.
# It takes the SDK's code from the shared library, as a plugin does; a test that drives one of the SDK's
# backends directly (VendelSDKInternals, or the macOS decisions on macOS, among its LIBS) takes the whole SDK
# from its archive instead, since the library exports no backend. So no test holds the SDK twice.
# DBUS tests run inside their own private session bus (dbus-run-session), on Linux only; every test runs
# with the offscreen platform so that widget tests need no display, unless it asks for the NATIVE one.
function(vendel_add_test class)
    cmake_parse_arguments(arg "DBUS;NATIVE" "" "SOURCES;LIBS" ${ARGN})
    if(arg_DBUS AND NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
        return()
    endif()
    set(target "test_${class}")
    add_executable(${target} ${arg_SOURCES})
    set(sdk VendelSDK::Core)
    if(VendelSDKInternals IN_LIST arg_LIBS OR (APPLE AND VendelMacDecisions IN_LIST arg_LIBS))
        set(sdk)
    endif()
    target_link_libraries(${target} PRIVATE Qt6::Test vendel_test_support vendel_warnings ${arg_LIBS} ${sdk})
    # A test checks the optimised code of the libraries it links; its own code needs neither optimisation nor
    # debug information, which cost the packaged build most of its compile time. Fortification needs
    # optimisation, so it goes with it.
    target_compile_options(${target} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O0 -g0 -U_FORTIFY_SOURCE>)
    # A test executable is no application bundle and has no update feed to start the macOS updater with;
    # linked in first, the updater that checks nothing (Linux's) keeps the platform's out of the test.
    # Its one header is the application's, whose folder only this source is given.
    if(APPLE)
        set(updater ${PROJECT_SOURCE_DIR}/app/platform/common/PackageManagerUpdater.cpp)
        target_sources(${target} PRIVATE ${updater})
        set_source_files_properties(${updater} PROPERTIES INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/app)
    endif()
    if(arg_DBUS)
        find_program(DBUS_RUN_SESSION dbus-run-session REQUIRED)
        add_test(NAME ${class} COMMAND ${DBUS_RUN_SESSION} -- $<TARGET_FILE:${target}>)
    else()
        add_test(NAME ${class} COMMAND ${target})
    endif()
    if(arg_NATIVE)
        set(environment "LC_ALL=C.UTF-8")
    else()
        set(environment "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
    endif()
    set_tests_properties(${class} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 120)
endfunction()

# vendel_add_script_test(<name> COMMAND <command>...): a test that runs a script, named after what it tests: the
# build's own CMake functions in script mode, or a script of the repository against recorded input.
function(vendel_add_script_test name)
    cmake_parse_arguments(arg "" "" "COMMAND" ${ARGN})
    add_test(NAME ${name} COMMAND ${arg_COMMAND})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "LC_ALL=C.UTF-8" TIMEOUT 120)
endfunction()
