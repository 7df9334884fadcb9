# Runs the sample program with the files of Ni(IV) and nickel metal swapped. The results
# with four references must then exceed their bounds (OFF). The results with two
# references do not use these files and must stay within their bounds.
file(REMOVE_RECURSE ${WORK})
file(COPY ${SAMPLE}/ DESTINATION ${WORK}/data)
file(RENAME ${WORK}/data/ref_ni4.dat ${WORK}/data/swap)
file(RENAME ${WORK}/data/ref_ni0.dat ${WORK}/data/ref_ni4.dat)
file(RENAME ${WORK}/data/swap ${WORK}/data/ref_ni0.dat)
execute_process(COMMAND ${PROGRAM} ${WORK}/data
  WORKING_DIRECTORY ${WORK}
  RESULT_VARIABLE status
  OUTPUT_VARIABLE output)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "exit status ${status}")
endif()
foreach(wanted
    "method, two references, linear background: good"
    "method, two references, Victoreen background: good"
    "fit, two references: good"
    "method, four references, linear background: OFF"
    "method, four references, Victoreen background: OFF"
    "fit, four references: OFF"
    "family, least square: good")
  if(NOT output MATCHES "${wanted}")
    message(FATAL_ERROR "\"${wanted}\" is not in: ${output}")
  endif()
endforeach()
