# What RACES says of suites.
add_custom_target(suites_for_races)

# zenlot_suite(<name> SOURCES <file>... LINKS <target>... [QT] [RACES] [LONG]
#              [ENVIRONMENT <NAME=value>...])
#
# One GoogleTest program per suite, registered under its name. It leaves its figures in
# test-results/<name>.xml, from which ./test adds up the totals. QT gives it a main() with an event
# loop that draws offscreen. RACES says that data races are looked for in it. LONG leaves it to
# `ctest -C long`.
function(zenlot_suite name)
    cmake_parse_arguments(SUITE "QT;RACES;LONG" "" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
    set(target ${name}_test)
    add_executable(${target} ${SUITE_SOURCES})
    zenlot_compile_together(${target})
    # Optimising what runs once takes longer than running it.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    # After the links, for a suite whose room is loaded and not linked.
    target_link_libraries(${target} PRIVATE ${SUITE_LINKS} zenlot_build_flags GTest::gmock)
    if(SUITE_QT)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/qt_main.cpp)
        target_link_libraries(${target} PRIVATE GTest::gtest Qt6::Gui Qt6::Test)
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
        if(ZENLOT_PRECOMPILE)
            zenlot_start_with_headers(${target} zenlot_suite_headers)
        endif()
        list(APPEND SUITE_ENVIRONMENT QT_QPA_PLATFORM=offscreen QT_FATAL_WARNINGS=1)
    else()
        target_link_libraries(${target} PRIVATE GTest::gtest_main)
    endif()
    set(results ${PROJECT_BINARY_DIR}/test-results/${name}.xml)
    set(configurations)
    if(SUITE_LONG)
        set(configurations CONFIGURATIONS long)
    endif()
    add_test(
        NAME ${name}
        COMMAND ${target} --gtest_output=xml:${results} --gtest_brief=1 ${configurations}
    )
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${SUITE_ENVIRONMENT}")
    if(SUITE_RACES)
        set_tests_properties(${name} PROPERTIES LABELS races)
        add_dependencies(suites_for_races ${target})
    endif()
endfunction()
