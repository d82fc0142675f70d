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
# Qt asks for it, and the tests share their precompiled headers.
target_compile_options(orvane_options INTERFACE -fPIC)
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

# The test framework's headers, compiled once for all test programs.
function(orvane_share_test_headers name)
  if(NOT TARGET orvane_test_headers)
    file(WRITE ${CMAKE_BINARY_DIR}/test_headers.cpp "")
    add_library(orvane_test_headers OBJECT ${CMAKE_BINARY_DIR}/test_headers.cpp)
    target_link_libraries(orvane_test_headers PRIVATE orvane_options GTest::gmock)
    target_compile_options(orvane_test_headers PRIVATE $<$<CONFIG:Release>:-O0>)
    target_precompile_headers(orvane_test_headers PRIVATE <gtest/gtest.h> <gmock/gmock.h> <functional> <string>
                                                          <vector>)
  endif()
  target_precompile_headers(${name} REUSE_FROM orvane_test_headers)
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
  # Tests run once: what they cost is their compiling.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  orvane_share_test_headers(${name})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS ${arg_LABEL} TIMEOUT 600)
endfunction()
