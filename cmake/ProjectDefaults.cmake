set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

add_library(orvista_warnings INTERFACE)
target_compile_options(orvista_warnings INTERFACE -Wall -Wextra -Werror)

if(ORVISTA_SANITIZERS)
  add_compile_options(-fsanitize=${ORVISTA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ORVISTA_SANITIZERS})
endif()
