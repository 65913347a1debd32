# Runs FUZZER for RUNS inputs over a copy of SEEDS in FOLDER, always the same inputs.
file(GLOB seeds ${SEEDS}/*)
if(NOT seeds)
  message(FATAL_ERROR "no seeds in ${SEEDS}")
endif()
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/tmp ${FOLDER}/findings)
file(COPY ${SEEDS}/ DESTINATION ${FOLDER}/corpus)
set(ENV{TMPDIR} ${FOLDER}/tmp)
execute_process(
  COMMAND ${FUZZER} -runs=${RUNS} -seed=1 -max_len=2048 -timeout=20 -rss_limit_mb=2048 -verbosity=0
          -artifact_prefix=${FOLDER}/findings/ ${FOLDER}/corpus
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${FUZZER} failed: ${result}")
endif()
