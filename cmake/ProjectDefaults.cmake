set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

add_library(orvista_warnings INTERFACE)
# GCC 12 warns of overlapping copies where optimized code appends to a std::string; there are none. In a batch it takes
# sources for headers, whose classes should not hold what is private to one source.
target_compile_options(orvista_warnings INTERFACE -Wall -Wextra -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict$<$<BOOL:${CMAKE_UNITY_BUILD}>:;-Wno-subobject-linkage>>)

if(ORVISTA_SANITIZERS)
  add_compile_options(-fsanitize=${ORVISTA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # At a fixed place a program starts a third sooner: tests start some thousands of them.
  add_link_options(-fsanitize=${ORVISTA_SANITIZERS} -no-pie)
endif()

# The tests and the command line are mostly their libraries' templates: optimising those under the sanitizers doubles the
# build's time and gains nothing, but for strings. Those are made once, and well: a linker keeps one of many copies of a
# function, and the copy of a test would slow down the core, too.
if(ORVISTA_SANITIZERS)
  add_library(orvista_string_templates OBJECT EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/tests/support/StringTemplates.cpp)
  target_include_directories(orvista_string_templates PRIVATE ${CMAKE_SOURCE_DIR})
endif()
function(orvista_compile_quickly target)
  if(NOT ORVISTA_SANITIZERS)
    return()
  endif()
  target_compile_options(${target} PRIVATE -O0 -include ${CMAKE_SOURCE_DIR}/tests/support/StringTemplates.h)
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL "EXECUTABLE")
    target_link_libraries(${target} PRIVATE orvista_string_templates)
  endif()
endfunction()

if(WIN32)
  include(${CMAKE_SOURCE_DIR}/packaging/windows/Program.cmake)
endif()
