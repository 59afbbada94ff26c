# Runs the viewer on a virtual X server and checks its picture.
# Variables: XVFB_RUN, VEXPLOT, PLUGIN, VIEWER, CHECKER, DATA, WORK_DIR, ROLES (comma-separated),
# VIEW (2d or 3d), NAME (the picture's name in the artifacts).
# Without xvfb-run it stops with a message the test reports as skipped.
if(NOT XVFB_RUN)
  message(FATAL_ERROR "SKIPPED: xvfb-run not found")
endif()

set(registry ${WORK_DIR}/${NAME}-registry.db)
set(picture ${WORK_DIR}/artifacts/${NAME}.png)
file(REMOVE ${registry} ${registry}-wal ${registry}-shm ${picture} ${picture}.json)
file(MAKE_DIRECTORY ${WORK_DIR}/artifacts)
set(ENV{VEXPLOT_REGISTRY} ${registry})

execute_process(COMMAND ${VEXPLOT} register ${PLUGIN} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "vexplot register failed (${status})")
endif()

# Every window of the control on screen: the info window (shown when its
# "Visible" setting says so) and the legend pinned rather than auto-hidden.
set(product "Software\\Kestrune Corporation\\Vexplot")
foreach(setting "${product};Visible;1" "${product}\\Legend;AutoHide;0" "${product}\\Legend;Visible;1")
  list(GET setting 0 key)
  list(GET setting 1 name)
  list(GET setting 2 value)
  execute_process(COMMAND ${VEXPLOT} settings set ${key} ${name} dword ${value} RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "vexplot settings set ${key} ${name} failed (${status})")
  endif()
endforeach()

execute_process(COMMAND ${XVFB_RUN} -a -s "-screen 0 1280x1024x24"
                        ${VIEWER} --screenshot ${picture} --size 1100x800 --view ${VIEW} ${DATA}
                RESULT_VARIABLE status TIMEOUT 120)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "vexplot-viewer --screenshot failed (${status})")
endif()

string(REPLACE "," ";" roles "${ROLES}")
execute_process(COMMAND ${CHECKER} ${picture} ${roles} RESULT_VARIABLE status)
message("picture kept at ${picture}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the picture does not show what it must")
endif()
