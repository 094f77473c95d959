# zenlot_suite(<name> SOURCES <file>... LINKS <target>... [QT] [ENVIRONMENT <NAME=value>...])
#
# One GoogleTest program per suite, registered under its name. It leaves its figures in
# test-results/<name>.xml, from which ./test adds up the totals. QT gives it a main() with an event
# loop that draws offscreen.
function(zenlot_suite name)
    cmake_parse_arguments(SUITE "QT" "" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
    set(target ${name}_test)
    add_executable(${target} ${SUITE_SOURCES})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${target} PRIVATE ${SUITE_LINKS} GTest::gmock)
    if(SUITE_QT)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/qt_main.cpp)
        target_link_libraries(${target} PRIVATE GTest::gtest Qt6::Gui Qt6::Test)
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
        # Qt warns where the folder for sockets is missing or open to others.
        set(runtime ${PROJECT_BINARY_DIR}/test-runtime)
        file(MAKE_DIRECTORY ${runtime})
        file(CHMOD ${runtime} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
        list(APPEND SUITE_ENVIRONMENT QT_QPA_PLATFORM=offscreen QT_FATAL_WARNINGS=1
             XDG_RUNTIME_DIR=${runtime}
        )
    else()
        target_link_libraries(${target} PRIVATE GTest::gtest_main)
    endif()
    set(results ${PROJECT_BINARY_DIR}/test-results/${name}.xml)
    add_test(NAME ${name} COMMAND ${target} --gtest_output=xml:${results} --gtest_brief=1)
    set_tests_properties(
        ${name} PROPERTIES ENVIRONMENT "${SUITE_ENVIRONMENT}"
    )
endfunction()
