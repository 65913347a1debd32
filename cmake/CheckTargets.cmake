# Targets that look at the sources without building them; the configured build must have been built once, so
# that generated headers exist.
set(source_folders model script link display check items compare sheets console widgets dialogs mainwindow simulator tools tests bench)

find_program(ORVISTA_CLANG_FORMAT NAMES clang-format-14 clang-format)
if(ORVISTA_CLANG_FORMAT)
  list(TRANSFORM source_folders REPLACE "(.+)" "${CMAKE_SOURCE_DIR}/\\1/*.h" OUTPUT_VARIABLE patterns)
  list(TRANSFORM source_folders REPLACE "(.+)" "${CMAKE_SOURCE_DIR}/\\1/*.cpp" OUTPUT_VARIABLE more_patterns)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns} ${more_patterns})
  add_custom_target(format-check
    COMMAND ${ORVISTA_CLANG_FORMAT} --dry-run --Werror ${sources}
    COMMENT "Checking the format of every source" VERBATIM)
endif()

find_program(ORVISTA_RUN_CLANG_TIDY NAMES run-clang-tidy-14 run-clang-tidy)
if(ORVISTA_RUN_CLANG_TIDY)
  list(JOIN source_folders "|" any_folder)
  # The recorded commands may be GCC's, whose warning options clang does not all know.
  add_custom_target(tidy
    COMMAND ${ORVISTA_RUN_CLANG_TIDY} -quiet -extra-arg=-Wno-unknown-warning-option -p ${CMAKE_BINARY_DIR}
      "^${CMAKE_SOURCE_DIR}/(${any_folder})/"
    COMMENT "Running clang-tidy over every source" VERBATIM)
endif()
