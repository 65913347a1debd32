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
  add_link_options(-fsanitize=${ORVISTA_SANITIZERS})
endif()

# The tests and the command line are mostly their libraries' templates: optimising those under the sanitizers doubles the
# build's time and gains nothing.
if(ORVISTA_SANITIZERS)
  set(ORVISTA_TEMPLATE_OPTIONS -O0)
endif()

if(WIN32)
  include(${CMAKE_SOURCE_DIR}/packaging/windows/Program.cmake)
endif()
