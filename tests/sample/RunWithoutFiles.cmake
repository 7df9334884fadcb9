# Runs the sample program on an empty folder. It must not crash, must report results
# outside their bounds, and must return 1.
execute_process(COMMAND ${PROGRAM} ${FOLDER}
  WORKING_DIRECTORY ${FOLDER}
  RESULT_VARIABLE status
  OUTPUT_VARIABLE output)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "exit status ${status}")
endif()
if(NOT output MATCHES "further off than the noise allows")
  message(FATAL_ERROR "unexpected output: ${output}")
endif()
