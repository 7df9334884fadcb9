# cpack runs this script after the installation and before it makes the package. The script
# adds what Debian requires: it writes a changelog, and compresses the changelog and the man
# pages. The compressed files contain no file name or time, so that the package is
# reproducible.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})

# The date in the changelog is the release date in the metainfo file.
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

# cpack created the outermost folder, with permissions that depend on the current umask.
file(CHMOD ${root} PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE
  WORLD_READ WORLD_EXECUTE)
