# vendel_add_test(<Class> SOURCES ... [LIBS ...] [DBUS]): one Qt Test executable per class, named as the class.
# DBUS tests run inside their own private session bus (dbus-run-session); every test runs with the
# offscreen platform so that widget tests need no display.
function(vendel_add_test class)
    cmake_parse_arguments(arg "DBUS" "" "SOURCES;LIBS" ${ARGN})
    set(target "test_${class}")
    add_executable(${target} ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE Qt6::Test vendel_test_support vendel_warnings ${arg_LIBS})
    if(arg_DBUS)
        find_program(DBUS_RUN_SESSION dbus-run-session REQUIRED)
        add_test(NAME ${class} COMMAND ${DBUS_RUN_SESSION} -- $<TARGET_FILE:${target}>)
    else()
        add_test(NAME ${class} COMMAND ${target})
    endif()
    set_tests_properties(${class} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
        TIMEOUT 120)
endfunction()
