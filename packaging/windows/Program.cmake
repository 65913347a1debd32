# orvista_windows_program(target description): the icon, version and manifest of a program of ours. Without the manifest
# there would be no long paths, no UTF-8 code page and blurred windows.
enable_language(RC)

function(orvista_windows_program target description)
  set(folder ${CMAKE_SOURCE_DIR}/packaging)
  set(ORVISTA_ICON ${folder}/icon/orvista-editor.ico)
  set(ORVISTA_MANIFEST ${folder}/windows/program.manifest)
  set(ORVISTA_PROGRAM ${target})
  set(ORVISTA_DESCRIPTION ${description})
  file(STRINGS ${CMAKE_SOURCE_DIR}/LICENSE ORVISTA_COPYRIGHT REGEX "^Copyright" LIMIT_COUNT 1)
  # "03" counts as 3
  math(EXPR major "${PROJECT_VERSION_MAJOR}")
  math(EXPR minor "${PROJECT_VERSION_MINOR}")
  set(ORVISTA_VERSION_NUMBERS "${major},${minor},${ORVISTA_RELEASE_NUMBER},0")
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${folder}/windows/program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${ORVISTA_ICON};${ORVISTA_MANIFEST}")
  target_sources(${target} PRIVATE ${resources})
  set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
endfunction()
