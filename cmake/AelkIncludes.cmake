# Makes the build of a target, and of all that needs it, fail when an include below
# the folder of the target breaks the rules of CheckIncludes.cmake. All sources of
# the folder are read, also those that are no target's.
function(aelk_check_includes target)
  get_target_property(tree ${target} SOURCE_DIR)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${tree}/*)
  set(check ${PROJECT_SOURCE_DIR}/cmake/CheckIncludes.cmake)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/includes.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DTREE=${tree} -DSTAMP=${stamp} -P ${check}
    DEPENDS ${sources} ${check}
    COMMENT "Checking who includes whom"
    VERBATIM)
  add_custom_target(${target}_includes DEPENDS ${stamp})
  add_dependencies(${target} ${target}_includes)
endfunction()
