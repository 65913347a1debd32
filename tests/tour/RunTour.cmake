# Plays the TOUR into FOLDER and compares the files it kept with GOLDEN: the same names, the same bytes.
execute_process(COMMAND ${TOUR} ${FOLDER} ${BITMAP} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the tour failed: ${result}")
endif()

file(GLOB_RECURSE expected RELATIVE ${GOLDEN} ${GOLDEN}/*)
file(GLOB_RECURSE made RELATIVE ${FOLDER}/files ${FOLDER}/files/*)
if(NOT expected OR NOT "${made}" STREQUAL "${expected}")
  message(FATAL_ERROR "the tour made\n${made}\nand not\n${expected}")
endif()
foreach(file IN LISTS expected)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${GOLDEN}/${file} ${FOLDER}/files/${file}
    RESULT_VARIABLE differs)
  if(differs)
    message(SEND_ERROR "${FOLDER}/files/${file} is not as expected")
  endif()
endforeach()

file(GLOB pictures ${FOLDER}/*.png)
list(LENGTH pictures count)
message("${count} pictures in ${FOLDER}")
