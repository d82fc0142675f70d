# How every library, program and test of the station is built.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${CCACHE_PROGRAM})
endif()

set(ORVANE_SANITIZE "" CACHE STRING "Sanitizers for the whole build, such as address,undefined")

add_library(orvane_options INTERFACE)
target_compile_options(orvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps that are none where std::string is appended to (its bug 105651).
  target_compile_options(orvane_options INTERFACE -Wno-restrict)
endif()
target_include_directories(orvane_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(ORVANE_SANITIZE)
  target_compile_options(orvane_options INTERFACE -fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_link_options(orvane_options INTERFACE -fsanitize=${ORVANE_SANITIZE})
endif()

# orvane_library(NAME SOURCES file... [LINKS library...]): a static library of one folder.
function(orvane_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC orvane_options ${arg_LINKS})
endfunction()

# orvane_test(NAME SOURCES file... [LINKS library...] [LABEL level]): one test program; each of its tests is a
# test of ctest. LABEL is the level: unit (default), station, program.
function(orvane_test name)
  cmake_parse_arguments(arg "" "LABEL" "SOURCES;LINKS" ${ARGN})
  if(NOT arg_LABEL)
    set(arg_LABEL unit)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock_main)
  target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <gmock/gmock.h> <string> <vector> <functional>)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS ${arg_LABEL} TIMEOUT 120)
endfunction()
