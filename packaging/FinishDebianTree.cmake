# Run by cpack between the installation and the packing: what a package of
# Debian wants and an installation by hand does not. Man pages and the package's
# own changelog are compressed, without the time and name of today's file in
# them, so that the same source gives the same bytes.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})

# The date of the release is that of the metainfo.
file(READ ${root}/share/metainfo/org.aelk.aelk.metainfo.xml metainfo)
if(NOT metainfo MATCHES "<release version=\"${CPACK_PACKAGE_VERSION}\" date=\"([0-9-]+)\"")
  message(FATAL_ERROR "the metainfo has no release ${CPACK_PACKAGE_VERSION}")
endif()
execute_process(COMMAND date --utc --rfc-email --date=${CMAKE_MATCH_1}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(changelog ${root}/share/doc/aelk/changelog)
file(WRITE ${changelog}
"aelk (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}; see CHANGELOG.md.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
file(GLOB_RECURSE pages ${root}/share/man/*.1)

foreach(file IN LISTS changelog pages)
  execute_process(COMMAND gzip -9 --no-name --force ${file} COMMAND_ERROR_IS_FATAL ANY)
  file(CHMOD ${file}.gz PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endforeach()

# cpack made the outermost folder by today's umask.
file(CHMOD ${root} PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE
  WORLD_READ WORLD_EXECUTE)
