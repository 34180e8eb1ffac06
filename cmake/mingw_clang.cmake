# Toolchain: as mingw.cmake, but clang compiles, in half of g++'s time. g++ links: its own headers and libraries then
# stand as in what is delivered, and exceptions pass through the library's handlers, which they do not when clang links.
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
set(SPELLWICK_LINK_BY ${CMAKE_CXX_COMPILER})
set(CMAKE_C_COMPILER clang-14)  # with gcc, CMake would look for precompiled headers of gcc's kind
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_C_COMPILER_TARGET ${MINGW_TRIPLE})
set(CMAKE_CXX_COMPILER_TARGET ${MINGW_TRIPLE})
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# clang knows neither the folders that Debian names after the threads nor that its libstdc++ emulates thread locals.
execute_process(COMMAND ${SPELLWICK_LINK_BY} -print-libgcc-file-name
    OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(folder ${library} DIRECTORY)
set(headers ${folder}/include/c++)
set(CMAKE_CXX_FLAGS_INIT "-femulated-tls -nostdinc++ -isystem ${headers} -isystem ${headers}/${MINGW_TRIPLE}")
