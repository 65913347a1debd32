# Compiles the help project in SOURCE to HELP_FILE with CHMCMD, in the folder WORK.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(GLOB pages ${SOURCE}/*.html ${SOURCE}/*.css ${SOURCE}/OR102.hh?)
file(COPY ${pages} ${SOURCE}/pictures DESTINATION ${WORK})
execute_process(COMMAND ${CHMCMD} OR102.hhp WORKING_DIRECTORY ${WORK}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR output MATCHES "[Ee]rror|[Ww]arning|not found|missing" OR NOT EXISTS ${WORK}/OR102.chm)
  message(FATAL_ERROR "chmcmd: ${result}\n${output}")
endif()
file(COPY_FILE ${WORK}/OR102.chm ${HELP_FILE})
