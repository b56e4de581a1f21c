# Flags that every target of the project shares, and the helpers that declare targets.

add_library(zelto_flags INTERFACE)
target_include_directories(zelto_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(zelto_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
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

# zelto_library(NAME SOURCES... LINK LIBRARIES...): one folder of src/ as a static library.
function(zelto_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC zelto_flags ${ARG_LINK})
    if(ZELTO_FUZZ)
        target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()

# zelto_test(NAME SOURCE LINK LIBRARIES...): one Qt Test program, run by CTest without a display.
function(zelto_test name source)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} zelto_test_support Qt6::Test rapidcheck)
    add_test(NAME ${name} COMMAND ${name})
    # The machine's own printers are none of a test's business.
    set_tests_properties(
        ${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;CUPS_SERVER=/nessuna/stampante")
endfunction()
