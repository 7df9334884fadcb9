# Generates the sample files again. They must have the same names and bytes as the committed
# files.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
execute_process(COMMAND ${GENERATOR} ${WORK} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB fresh RELATIVE ${WORK} ${WORK}/*)
file(GLOB committed RELATIVE ${COMMITTED} ${COMMITTED}/*)
if(NOT fresh STREQUAL committed)
  message(FATAL_ERROR "generated: ${fresh}\ncommitted: ${committed}")
endif()
foreach(name IN LISTS fresh)
  file(SHA256 ${WORK}/${name} new)
  file(SHA256 ${COMMITTED}/${name} old)
  if(NOT new STREQUAL old)
    message(FATAL_ERROR "${name} differs from the generated file")
  endif()
endforeach()
