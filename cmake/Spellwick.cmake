# Compiler settings, and the functions that declare the targets of every folder.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# tools/tidy reads each source alone too, so that a missing include does not stay hidden.
set(CMAKE_UNITY_BUILD ${SPELLWICK_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 0)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Unless told to be sloppy, ccache does not cache what uses a precompiled header. In depend mode it
    # takes the dependencies from the compiler and saves a run of the preprocessor.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_DEPEND=1 ${CCACHE_PROGRAM})
endif()

if(WIN32)
    # Link the compiler's libraries statically, so that a program needs no DLL beside it.
    add_link_options(-static)
    # No time in the head of a program, so that the same sources give the same bytes. The linker drops the
    # symbols of what is delivered, because strip would put the time back.
    add_link_options(-Wl,--no-insert-timestamp $<$<CONFIG:Release>:-s>)
    add_compile_definitions(UNICODE _UNICODE NOMINMAX _WIN32_WINNT=0x0A00)
    if(SPELLWICK_LINK_BY)
        enable_language(C)  # here, or each folder that enables it would set its own rule
        # The two compilers give some inline functions sections of different sizes, of which the linker would tell.
        foreach(language C CXX)
            string(CONCAT CMAKE_${language}_LINK_EXECUTABLE "${SPELLWICK_LINK_BY} <CMAKE_${language}_LINK_FLAGS> "
                "<LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES> -Wl,--no-warnings")
        endforeach()
    endif()
endif()

add_library(spellwick_options INTERFACE)
target_include_directories(spellwick_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(spellwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wnull-dereference
    # At -O3, g++ 12 falsely warns of overlap where a literal and a string are added.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)
if(SPELLWICK_SANITIZE)
    target_compile_options(spellwick_options INTERFACE
        -fsanitize=${SPELLWICK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # g++ 12 warns of the sanitizers' own code; the other builds keep the warning.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(spellwick_options INTERFACE -fsanitize=${SPELLWICK_SANITIZE})
endif()
if(SPELLWICK_FUZZ)
    # Calls at every comparison take a third of the time, and at those of whole texts the sanitizer has hooks
    # anyway.
    target_compile_options(spellwick_options INTERFACE
        -fno-sanitize-coverage=trace-cmp,stack-depth
        -fsanitize-coverage-ignorelist=${CMAKE_SOURCE_DIR}/tests/fuzz/not_searched.txt)
endif()

# spellwick_library(NAME SOURCES a.cpp ... [LINK lib ...]): one static library for one folder.
function(spellwick_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    set_property(GLOBAL APPEND PROPERTY SPELLWICK_LIBRARIES ${name})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE spellwick_options)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    if(SPELLWICK_SANITIZE AND name MATCHES "_(text|model)$")
        # The long tests work mostly here, and would take four times as long.
        target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O1>)
    endif()
endfunction()

# spellwick_one_definition(TARGET PROGRAM): a target that fails where one name has two definitions in what is
# compiled with -flto: PROGRAM and the libraries so far. It joins them and makes no code, in a fifth of a link's time.
function(spellwick_one_definition target program)
    get_property(libraries GLOBAL PROPERTY SPELLWICK_LIBRARIES)
    set(files ${libraries})
    list(TRANSFORM files REPLACE "(.+)" "$<TARGET_FILE:\\1>")
    add_custom_command(OUTPUT ${target}.o
        COMMAND ${CMAKE_CXX_COMPILER} -O0 -Wodr -Werror=odr -flto=auto -r -nostdlib -flinker-output=rel -o ${target}.o
            $<TARGET_OBJECTS:${program}> -Wl,--whole-archive ${files}
        DEPENDS $<TARGET_OBJECTS:${program}> ${libraries}
        COMMAND_EXPAND_LISTS VERBATIM)
    add_custom_target(${target} DEPENDS ${target}.o)
endfunction()

# spellwick_moc(TARGET): for a target whose classes have signals or slots.
function(spellwick_moc target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    if(SPELLWICK_UNITY)
        # CMake compiles what moc writes apart, which reads all of Qt's headers once more.
        get_target_property(folder ${target} BINARY_DIR)
        set(mocs ${folder}/${target}_autogen/mocs_compilation.cpp)
        set_source_files_properties(${mocs} PROPERTIES HEADER_FILE_ONLY ON)
        file(CONFIGURE OUTPUT ${folder}/${target}_mocs.cpp CONTENT "#include \"${mocs}\"\n")
        target_sources(${target} PRIVATE ${folder}/${target}_mocs.cpp)
    endif()
endfunction()

set(SPELLWICK_TEST_OPTIONS -O0 -g1)
if(WIN32)
    # Nothing under Wine shows a backtrace. The linker's time is quadratic in the functions, of which -Og leaves a
    # third.
    set(SPELLWICK_TEST_OPTIONS -Og)
endif()

# Links in half the time of the default linker, which the program needs for -z pack-relative-relocs.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    find_program(SPELLWICK_GOLD ld.gold)
endif()

# spellwick_test_code(TARGET unit|form|desktop): compiles the tests' own sources, which change often
# and run briefly, without optimisation; what they test stays optimised. Uses the precompiled headers
# of the label (tests/support/CMakeLists.txt).
function(spellwick_test_code target label)
    target_compile_options(${target} PRIVATE ${SPELLWICK_TEST_OPTIONS})
    if(SPELLWICK_GOLD AND NOT SPELLWICK_SANITIZE)  # it warns of clang's own code
        target_link_options(${target} PRIVATE -fuse-ld=gold)
    endif()
    if(label STREQUAL "form")
        target_precompile_headers(${target} REUSE_FROM spellwick_form_headers)
    else()
        target_precompile_headers(${target} REUSE_FROM spellwick_unit_headers)
    endif()
endfunction()

# spellwick_register(NAME unit|form|desktop PROGRAM [FILTER pattern] [ENVIRONMENT a=b ...]
# [TIMEOUT s] [SHARDS n]): registers a run of a GoogleTest program with CTest, or n runs of a share of its
# tests each, NAME_1 and so on, so that a long program keeps all cores busy. Each run leaves its results
# in cases/NAME.xml, where tools/tally looks for them.
function(spellwick_register name label program)
    cmake_parse_arguments(ARG "" "FILTER;TIMEOUT;SHARDS" "ENVIRONMENT" ${ARGN})
    if(ARG_SHARDS AND NOT WIN32)  # a process costs more under Wine than a share saves
        set(options "")
        foreach(option FILTER TIMEOUT)
            if(ARG_${option})
                list(APPEND options ${option} ${ARG_${option}})
            endif()
        endforeach()
        math(EXPR last "${ARG_SHARDS} - 1")
        foreach(index RANGE ${last})
            math(EXPR number "${index} + 1")
            spellwick_register(${name}_${number} ${label} ${program} ${options}
                ENVIRONMENT GTEST_TOTAL_SHARDS=${ARG_SHARDS} GTEST_SHARD_INDEX=${index}
                    ${ARG_ENVIRONMENT})
        endforeach()
        return()
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    if(ARG_FILTER)
        add_test(NAME ${name} COMMAND ${program} "--gtest_filter=${ARG_FILTER}")
    else()
        add_test(NAME ${name} COMMAND ${program})
    endif()
    set(results "${CMAKE_BINARY_DIR}/cases/${name}.xml")
    if(WIN32)
        set(results "Z:${results}")  # where Wine shows the files of this system
    endif()
    set(environment "GTEST_OUTPUT=xml:${results}")
    if(label STREQUAL "form")
        list(APPEND environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8)
    endif()
    list(APPEND environment ${ARG_ENVIRONMENT})
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT ${ARG_TIMEOUT}
        ENVIRONMENT "${environment}")
endfunction()

# spellwick_test(NAME unit|form|desktop SOURCES a.cpp ... [LINK lib ...] [TIMEOUT s] [SHARDS n]):
# one GoogleTest program, and a run of it, or n.
# Unit tests link GoogleTest's own main; form and desktop tests bring theirs. Desktop tests are not for the
# sanitizers, which are too slow for their bounds of time.
function(spellwick_test name label)
    cmake_parse_arguments(ARG "" "TIMEOUT;SHARDS" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    if(SPELLWICK_SANITIZE AND label STREQUAL "desktop")
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    else()
        spellwick_register(${name} ${label} ${name} TIMEOUT ${ARG_TIMEOUT} SHARDS ${ARG_SHARDS})
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gmock spellwick_options)
    spellwick_test_code(${name} ${label})
    if(label STREQUAL "unit")
        target_link_libraries(${name} PRIVATE GTest::gmock_main)
    endif()
endfunction()
