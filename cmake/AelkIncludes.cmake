# Adds a check of the includes to a target; CheckIncludes.cmake contains the rules. The check
# runs before the target is built. If an include breaks a rule, the build of the target and of
# all targets that depend on it fails. The check covers all sources in the source folder of the
# target, even sources that belong to no target.
function(aelk_check_includes target)
  get_target_property(tree ${target} SOURCE_DIR)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${tree}/*)
  set(check ${PROJECT_SOURCE_DIR}/cmake/CheckIncludes.cmake)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/includes.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -DTREE=${tree} -DSTAMP=${stamp} -P ${check}
    DEPENDS ${sources} ${check}
    COMMENT "Checking the includes between folders"
    VERBATIM)
  add_custom_target(${target}_includes DEPENDS ${stamp})
  add_dependencies(${target} ${target}_includes)
endfunction()
