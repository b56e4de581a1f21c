# Flags that every target of the project shares, and the helpers that declare targets.

add_library(zelto_flags INTERFACE)
target_include_directories(zelto_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(zelto_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
target_compile_definitions(
    zelto_flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                          ZELTO_VERSION="${PROJECT_VERSION}")
if(ZELTO_SANITIZE)
    target_compile_options(
        zelto_flags INTERFACE "-fsanitize=${ZELTO_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zelto_flags INTERFACE "-fsanitize=${ZELTO_SANITIZE}")
endif()
if(ZELTO_COVERAGE)
    target_compile_options(zelto_flags INTERFACE --coverage)
    target_link_options(zelto_flags INTERFACE --coverage)
endif()

# Headers that nearly every source includes, compiled once for each set of flags. CMake takes them
# for a target's own; the sources name what they use all the same.
set(zelto_core_headers <QDir> <QFile> <QHash> <QSet> <QString> <QStringList> <algorithm> <array> <functional>
                       <map> <memory> <optional> <span> <vector>)
set(zelto_window_headers ${zelto_core_headers} <QtWidgets/QtWidgets>)

# zelto_library(NAME FOLDERS... EXCEPT SOURCES... HEADERS_OF TARGET LINK LIBRARIES...): all sources of
# some folders as a static library. HEADERS_OF names the library whose compiled headers it shares.
function(zelto_library name)
    cmake_parse_arguments(ARG "" "HEADERS_OF" "FOLDERS;EXCEPT;LINK" ${ARGN})
    set(sources "")
    foreach(folder ${ARG_FOLDERS})
        file(GLOB found CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" ${folder}/*.cpp ${folder}/*.h)
        list(APPEND sources ${found})
    endforeach()
    list(TRANSFORM sources REPLACE "^\\./" "")
    list(REMOVE_ITEM sources "" ${ARG_EXCEPT})
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC zelto_flags ${ARG_LINK})
    if(ARG_HEADERS_OF)
        target_precompile_headers(${name} REUSE_FROM ${ARG_HEADERS_OF})
    endif()
    if(ZELTO_FUZZ)
        target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()

# zelto_sees_qpdf(SOURCES...): sources that include headers of libqpdf, which in Debian 12 are no C++20 to clang.
function(zelto_sees_qpdf)
    set_source_files_properties(
        ${ARGN} PROPERTIES SKIP_PRECOMPILE_HEADERS ON COMPILE_OPTIONS -std=c++17 COMPILE_DEFINITIONS
                                                                          POINTERHOLDER_TRANSITION=4)
endfunction()
