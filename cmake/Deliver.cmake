# Puts the delivered files beside the program of the build tree.
#   cmake -DDELIVERED=DIR -DAPP=DIR -P Deliver.cmake
# Preferences and database belong to whoever runs the program there, so they are only put where there are none.
file(GLOB_RECURSE names RELATIVE ${DELIVERED} ${DELIVERED}/*)
foreach(name IN LISTS names)
  if(name STREQUAL "Database.zip" AND EXISTS ${APP}/Tarvolinex.mdb)
    continue()
  endif()
  if(name MATCHES "^(Database.zip|General.dat)$" AND EXISTS ${APP}/${name})
    continue()
  endif()
  get_filename_component(folder ${APP}/${name} DIRECTORY)
  file(COPY ${DELIVERED}/${name} DESTINATION ${folder})
endforeach()
