# Runs PROGRAM with the list ARGS and checks its exit code (EXIT) and that its error output
# contains STDERR.
execute_process(COMMAND ${PROGRAM} ${ARGS} RESULT_VARIABLE code ERROR_VARIABLE err
                OUTPUT_QUIET)
if(NOT code EQUAL EXIT)
  message(FATAL_ERROR "exit code ${code}, expected ${EXIT}; stderr:\n${err}")
endif()
string(FIND "${err}" "${STDERR}" found)
if(found EQUAL -1)
  message(FATAL_ERROR "stderr lacks '${STDERR}':\n${err}")
endif()
