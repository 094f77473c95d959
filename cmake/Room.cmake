# What every target is compiled with.
add_library(zenlot_build_flags INTERFACE)
target_compile_features(zenlot_build_flags INTERFACE cxx_std_20)
target_compile_options(
    zenlot_build_flags
    INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
)
# g++ 12 sees overlapping copies in std::string's operator+ where there are none (GCC bug 105329).
target_compile_options(zenlot_build_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_compile_definitions(
    zenlot_build_flags
    INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
              QT_NO_CAST_FROM_BYTEARRAY ZENLOT_VERSION="${PROJECT_VERSION}"
)
# Programs that stand wherever the system puts them, and end when their memory is written to past
# what was meant for it.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT ZENLOT_SANITIZE)
    include(CheckCXXCompilerFlag)
    foreach(option -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "ZENLOT_HAS${option}" has)
        check_cxx_compiler_flag(${option} ${has})
        if(${has})
            target_compile_options(zenlot_build_flags INTERFACE ${option})
        endif()
    endforeach()
    # Some compilers come with a value of their own; without optimisation there is nothing to fortify.
    target_compile_options(
        zenlot_build_flags
        INTERFACE -U_FORTIFY_SOURCE $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>
    )
    target_compile_definitions(zenlot_build_flags INTERFACE _GLIBCXX_ASSERTIONS)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        target_link_options(zenlot_build_flags INTERFACE -Wl,-z,relro,-z,now)
    endif()
endif()
if(ZENLOT_SANITIZE)
    # The checks that sanitizers put in make g++ see uninitialised values where there are none, and
    # clang 14 can't assemble coroutines with the one for the types of functions.
    target_compile_options(
        zenlot_build_flags INTERFACE -fsanitize=${ZENLOT_SANITIZE} -fno-omit-frame-pointer
                                     -fno-sanitize-recover=all
                                     $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
                                     $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>
    )
    target_link_options(zenlot_build_flags INTERFACE -fsanitize=${ZENLOT_SANITIZE})
endif()
set(CMAKE_CXX_EXTENSIONS OFF)

# Reading the headers is most of the work of compiling, so sources are compiled several at a time
# where nobody waits for the change of a single one. Two cores still share a large room.
function(zenlot_compile_together target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${ZENLOT_UNITY} UNITY_BUILD_BATCH_SIZE 10)
    if(ZENLOT_UNITY AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # In a unit every source looks like a header, in which such a class could not be used.
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
endfunction()

# The headers that most sources of Qt begin with are read once (ZENLOT_PRECOMPILE).
# zenlot_start_with_headers(<target> <precompiled>) has a target begin with them. GCC takes what it has
# read only where the options are the same, and warns where they are not; others are stricter.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(ZENLOT_PRECOMPILE OFF)
endif()
function(zenlot_precompiled_headers name)
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "" @ONLY)
    add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_precompile_headers(${name} PRIVATE ${ARGN})
    # For ccache, which sees what was precompiled no other way.
    target_compile_options(${name} PRIVATE -fpch-preprocess)
    target_link_libraries(${name} PRIVATE zenlot_build_flags Qt6::Core)
    # Not the definitions of the others, which each target would have to share.
    foreach(library Qt6::DBus Qt6::Qml)
        if(TARGET ${library})
            target_include_directories(
                ${name} SYSTEM PRIVATE $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>
            )
        endif()
    endforeach()
endfunction()
function(zenlot_start_with_headers target name)
    target_compile_options(${target} PRIVATE -fpch-preprocess)
    target_precompile_headers(${target} REUSE_FROM ${name})
endfunction()

# zenlot_room(<folder below src> [SOURCES <file>...] [LINKS <target>...] [PRIVATE_LINKS <target>...])
#
# One static library per room, named after its folder: inventory/linux is zenlot_inventory_linux. A
# room without sources holds interfaces only.
# What a room links is also what it may include. It must have been made by then, so a room links only
# rooms below it; tests/architecture draws the picture of the house from what is recorded here.
function(zenlot_room folder)
    cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    string(REPLACE "/" "_" target "zenlot_${folder}")
    foreach(link ${ROOM_LINKS} ${ROOM_PRIVATE_LINKS})
        if(link MATCHES "^zenlot_" AND NOT TARGET ${link})
            message(FATAL_ERROR "${folder} links ${link}, which is no room below it")
        endif()
    endforeach()
    if(ROOM_SOURCES)
        add_library(${target} STATIC ${ROOM_SOURCES})
        target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
        target_link_libraries(
            ${target} PUBLIC zenlot_build_flags ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS}
        )
        zenlot_compile_together(${target})
        if(ZENLOT_PRECOMPILE AND "${ROOM_LINKS}" MATCHES "Qt6::")
            zenlot_start_with_headers(${target} zenlot_room_headers)
        endif()
    else()
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE ${PROJECT_SOURCE_DIR}/src)
        target_link_libraries(${target} INTERFACE zenlot_build_flags ${ROOM_LINKS})
    endif()
    list(JOIN ROOM_LINKS " " public)
    list(JOIN ROOM_PRIVATE_LINKS " " private)
    set_property(GLOBAL APPEND PROPERTY ZENLOT_ROOMS "${folder}: ${public} ${private}")
endfunction()

# zenlot_room_qml(<folder> URI <uri> [<further arguments of qt_add_qml_module>...])
#
# Gives a room its QML. The module is found below qrc:/qt/qml.
function(zenlot_room_qml folder)
    string(REPLACE "/" "_" target "zenlot_${folder}")
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    cmake_parse_arguments(QML "" "URI" "" ${ARGN})
    string(REPLACE "." "/" path "${QML_URI}")
    # The C++ that Qt 6.4 makes of QML is in another order each time, the bytecode is not.
    set_target_properties(${target} PROPERTIES QT_QMLCACHEGEN_ARGUMENTS --only-bytecode)
    # qmllint finds modules by folders that are named like them.
    qt_add_qml_module(
        ${target}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${path}
        IMPORT_PATH ${PROJECT_BINARY_DIR}/qml
        ${ARGN}
    )
    # Code that Qt generates is not held to our warnings.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/\\.rcc/")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
    if(ZENLOT_PRECOMPILE AND TARGET ${target}_qmlcache)
        zenlot_start_with_headers(${target}_qmlcache zenlot_room_headers)
    endif()
    if(ZENLOT_UNITY)
        # Files with options of their own are left out of CMake's units.
        list(FILTER sources INCLUDE REGEX "_qml\\.cpp$")
        set_source_files_properties(${sources} PROPERTIES HEADER_FILE_ONLY ON)
        list(TRANSFORM sources REPLACE "(.+)" "#include \"\\1\"")
        list(JOIN sources "\n" includes)
        set(unit ${CMAKE_CURRENT_BINARY_DIR}/${target}_compiled_qml.cpp)
        file(CONFIGURE OUTPUT ${unit} CONTENT "${includes}\n" @ONLY)
        set_source_files_properties(
            ${unit} PROPERTIES COMPILE_OPTIONS -w SKIP_AUTOMOC ON
        )
        target_sources(${target} PRIVATE ${unit})
    endif()
endfunction()

# zenlot_qml_plugin(<folder> URI <uri> SOURCES <file>... LINKS <target>...)
#
# A room of QML types that the program loads when it first imports them, with the libraries that
# nothing else needs. No room links it.
set(ZENLOT_PLUGIN_FOLDER ${CMAKE_INSTALL_LIBDIR}/zenlot/qml)
function(zenlot_qml_plugin folder)
    cmake_parse_arguments(ROOM "" "URI" "SOURCES;LINKS" ${ARGN})
    string(REPLACE "/" "_" target "zenlot_${folder}")
    string(REPLACE "." "/" path "${ROOM_URI}")
    qt_add_qml_module(
        ${target}
        URI ${ROOM_URI}
        VERSION 1.0
        DEPENDENCIES QtQuick
        PLUGIN_TARGET ${target}
        OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${path}
        SOURCES ${ROOM_SOURCES}
    )
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${target} PRIVATE zenlot_build_flags ${ROOM_LINKS})
    set(destination ${ZENLOT_PLUGIN_FOLDER}/${path})
    install(TARGETS ${target} LIBRARY DESTINATION ${destination})
    install(FILES ${PROJECT_BINARY_DIR}/qml/${path}/qmldir DESTINATION ${destination})
    list(JOIN ROOM_LINKS " " links)
    set_property(GLOBAL APPEND PROPERTY ZENLOT_ROOMS "${folder}: ${links} ")
endfunction()
