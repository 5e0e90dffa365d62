# How a folder becomes a target, in one place.
#
# A folder is a layer. Each target sees its own folder and those of the targets that it links, and
# no other: its include path is a folder in the build tree that holds one link, to its sources. So
# an include that breaks the order of the layers does not compile.

option(VN_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(VN_FUZZ "Build the fuzzers (clang only)" OFF)

# A log line names a file by its place in the repository. A build for Windows, and a compiler cache,
# name a source by its way from the build folder.
file(RELATIVE_PATH way_to_source ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})

add_library(vn_options INTERFACE)
target_compile_options(vn_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Werror
  -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/= -fmacro-prefix-map=${way_to_source}=)
if(WIN32) # has one platform, which needs no display until there is a window
  set(offscreen windows)
else()
  set(offscreen offscreen)
endif()
target_compile_definitions(vn_options INTERFACE
  VN_OFFSCREEN="${offscreen}" # the platform of Qt's for a program that only draws
  QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_ASCII)
if(VN_SANITIZE)
  target_compile_options(vn_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vn_options INTERFACE -fsanitize=address,undefined)
endif()

if(VN_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VN_FUZZ needs clang: tools/fuzz configures a build of its own")
  endif()
  target_compile_options(vn_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vn_options INTERFACE -fsanitize=address,undefined)
endif()

# Where Qt keeps what lives as long as a session; it warns unless the folder is the user's alone.
set(VN_RUNTIME_FOLDER ${CMAKE_BINARY_DIR}/runtime)
file(MAKE_DIRECTORY ${VN_RUNTIME_FOLDER})
file(CHMOD ${VN_RUNTIME_FOLDER} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# What goes in front of a path of this machine in a program that is run here: Wine has a drive for it.
set(VN_DRIVE "")
if(WIN32)
  set(VN_DRIVE "Z:")
endif()
# Makes `#include "FOLDER/Header.h"` find this source folder for TARGET and for those that link it.
function(vn_expose target folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${folder} SYMBOLIC)
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE ${root})
  else()
    target_include_directories(${target} PUBLIC ${root})
  endif()
endfunction()

# vn_library(TARGET FOLDER name SOURCES ... LINKS ...): one folder as a static library.
function(vn_library target)
  cmake_parse_arguments(arg "" "FOLDER" "SOURCES;LINKS" ${ARGN})
  add_library(${target} STATIC ${arg_SOURCES})
  target_link_libraries(${target} PUBLIC ${arg_LINKS} PRIVATE vn_options)
  vn_expose(${target} ${arg_FOLDER})
endfunction()

# vn_test(NAME SOURCES ... LINKS ...): a Qt Test program, run without a display. NAME.cpp is taken
# when no SOURCES are given.
function(vn_test name)
  vn_test_program(${name} "" offscreen ${ARGN})
endfunction()

# vn_display_test(NAME ...): the same, in real windows with real focus, on a display of its own.
function(vn_display_test name)
  vn_test_program(${name} ${CMAKE_SOURCE_DIR}/tools/with_display xcb ${ARGN})
endfunction()

function(vn_test_program name launcher platform)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  if(NOT arg_SOURCES)
    set(arg_SOURCES ${name}.cpp)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 600) # seconds; a machine may be busy
  endif()
  if(WIN32) # every program is run under Wine, and the static Qt has real windows only
    set(launcher ${CMAKE_SOURCE_DIR}/tools/windows/run)
    set(platform windows)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} vn_test_support vn_options)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${launcher} $<TARGET_FILE:${name}>)
  set(environment
    QT_QPA_PLATFORM=${platform}
    XDG_RUNTIME_DIR=${VN_RUNTIME_FOLDER}
    QTEST_FUNCTION_TIMEOUT=3600000 # ms; the limit is that of the whole program
    LC_ALL=C.UTF-8
    LSAN_OPTIONS=suppressions='${CMAKE_SOURCE_DIR}/tests/lsan.supp':print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1
    ${arg_ENVIRONMENT})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "${environment}")
endfunction()

# vn_fuzzer(NAME LINKS ...): NAME.cpp with libFuzzer's main function. tools/fuzz builds it, in a build
# folder of its own, and runs it; among the tests under the sanitizers it runs for a minute.
function(vn_fuzzer name)
  cmake_parse_arguments(arg "" "" "LINKS" ${ARGN})
  if(VN_SANITIZE)
    add_test(NAME fuzz_${name} COMMAND ${CMAKE_SOURCE_DIR}/tools/fuzz ${name} 60)
    set_tests_properties(fuzz_${name} PROPERTIES
      TIMEOUT 1800 # the build counts too
      RESOURCE_LOCK fuzz_build) # which they share
  endif()
  if(NOT VN_FUZZ)
    return()
  endif()
  add_executable(fuzz_${name} ${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${arg_LINKS} vn_options)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzzers)
endfunction()
