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

# orvane_precompile(NAME HEADERS header... [LINKS library...] [OPTIONS option...]): headers of others, compiled once for all
# targets that take them up with target_precompile_headers(... REUSE_FROM NAME). Each file includes what it uses all the
# same: the package is built without them.
# Not for the station's own folders: behind them GCC 12 at -O3 takes many an assignment to a string for an overflow.
function(orvane_precompile name)
  cmake_parse_arguments(arg "" "" "HEADERS;LINKS;OPTIONS" ${ARGN})
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE orvane_options ${arg_LINKS})
  target_compile_options(${name} PRIVATE ${arg_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

set(ORVANE_STANDARD_HEADERS
    <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <filesystem> <functional> <map> <memory> <optional> <set> <span>
    <sstream> <stdexcept> <string> <string_view> <utility> <variant> <vector>)
set(ORVANE_WIDGET_HEADERS
    <QApplication> <QComboBox> <QEvent> <QKeyEvent> <QLabel> <QLineEdit> <QPainter> <QPointer> <QPushButton> <QScrollBar>
    <QStyle> <QTimer> <QWidget>)

# orvane_library(NAME SOURCES file... [LINKS library...] [HEADERS target]): a static library of one folder. HEADERS names
# the precompiled headers (default: none).
function(orvane_library name)
  cmake_parse_arguments(arg "" "HEADERS" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC orvane_options ${arg_LINKS})
  if(arg_HEADERS)
    target_precompile_headers(${name} REUSE_FROM ${arg_HEADERS})
  endif()
endfunction()

# orvane_test(NAME SOURCES file... [LINKS library...] [LABEL level]): one test program; each of its tests is a
# test of ctest. LABEL is the level: unit (default), station, program.
# HEADERS names the precompiled headers (default: the test framework's). EXCEPT is a pattern of tests that are none of ctest's.
function(orvane_test name)
  cmake_parse_arguments(arg "" "LABEL;HEADERS;EXCEPT" "SOURCES;LINKS" ${ARGN})
  if(NOT arg_LABEL)
    set(arg_LABEL unit)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock_main)
  # Tests run once: what they cost is their compiling.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  if(NOT arg_HEADERS)
    set(arg_HEADERS orvane_test_headers)
  endif()
  target_precompile_headers(${name} REUSE_FROM ${arg_HEADERS})
  if(arg_EXCEPT)
    set(filter TEST_FILTER -${arg_EXCEPT})
  endif()
  gtest_discover_tests(${name} ${filter} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS ${arg_LABEL} TIMEOUT 600)
endfunction()
