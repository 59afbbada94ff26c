# Runs at install time: installs the public headers (include/vexplot/) and
# every private header they include, directly or not, under
# include/vexplot/internal/, with their includes rewritten to that place.
# The installed set thus compiles on its own with only <prefix>/include on
# the include path, and a host's own folders of the same names (model/,
# control/ ...) cannot clash with ours. A quoted include that is neither
# public nor private fails the install instead of leaving a header that
# does not compile.
#
# In: VEXPLOT_SOURCE_DIR, VEXPLOT_STAGE_DIR (a scratch folder), VEXPLOT_INCLUDEDIR.
set(public_root "${VEXPLOT_SOURCE_DIR}/include")
set(private_root "${VEXPLOT_SOURCE_DIR}/src")
file(REMOVE_RECURSE "${VEXPLOT_STAGE_DIR}")

file(GLOB public_headers RELATIVE "${public_root}" "${public_root}/vexplot/*.h")
set(pending)
foreach(header IN LISTS public_headers)
  list(APPEND pending "public|${header}")
endforeach()
set(done)
while(pending)
  list(POP_FRONT pending entry)
  if(entry IN_LIST done)
    continue()
  endif()
  list(APPEND done "${entry}")
  string(REPLACE "|" ";" parts "${entry}")
  list(GET parts 0 kind)
  list(GET parts 1 header)
  if(kind STREQUAL "public")
    set(from "${public_root}/${header}")
    set(to "${VEXPLOT_STAGE_DIR}/${header}")
  else()
    set(from "${private_root}/${header}")
    set(to "${VEXPLOT_STAGE_DIR}/vexplot/internal/${header}")
  endif()
  file(READ "${from}" text)
  string(REGEX MATCHALL "#include \"[^\"]+\"" includes "${text}")
  get_filename_component(folder "${header}" DIRECTORY)
  foreach(line IN LISTS includes)
    string(REGEX REPLACE "#include \"([^\"]+)\"" "\\1" name "${line}")
    if(kind STREQUAL "private" AND EXISTS "${private_root}/${folder}/${name}")
      # Beside the including header: the folder is kept, so the line stays.
      list(APPEND pending "private|${folder}/${name}")
    elseif(EXISTS "${public_root}/${name}")
      list(APPEND pending "public|${name}")
    elseif(EXISTS "${private_root}/${name}")
      list(APPEND pending "private|${name}")
      string(REPLACE "${line}" "#include \"vexplot/internal/${name}\"" text "${text}")
    else()
      message(FATAL_ERROR "${from} includes \"${name}\", which is not a header of the library")
    endif()
  endforeach()
  file(WRITE "${to}" "${text}")
endwhile()

file(INSTALL DESTINATION "${CMAKE_INSTALL_PREFIX}/${VEXPLOT_INCLUDEDIR}" TYPE DIRECTORY FILES "${VEXPLOT_STAGE_DIR}/vexplot")
