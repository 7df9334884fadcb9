# The first step of the installation: creates the missing folders of the list `folders`
# with read permission for all users. If CMake created them, their permissions would depend on
# the umask of the user who installs. Existing folders keep their permissions.
function(make_folder folder)
  if("${folder}" STREQUAL "" OR EXISTS "${folder}")
    return()
  endif()
  get_filename_component(parent "${folder}" DIRECTORY)
  make_folder("${parent}")
  file(MAKE_DIRECTORY ${folder})
  file(CHMOD ${folder} PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
endfunction()

foreach(folder IN LISTS folders)
  if(NOT IS_ABSOLUTE ${folder})
    set(folder ${CMAKE_INSTALL_PREFIX}/${folder})
  endif()
  make_folder("$ENV{DESTDIR}${folder}")
endforeach()
