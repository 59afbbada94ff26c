# Runs `vexplot render` against a fresh settings file, three times:
#   1. nothing registered: it registers the plug-in beside it and says so;
#   2. registered: it says nothing;
#   3. the user registered a copy of the plug-in elsewhere: that one stays.
# In: VEXPLOT, PLUGIN, DATA, WORK_DIR.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{VEXPLOT_REGISTRY} "${WORK_DIR}/registry.db")
set(record "Software\\Classes\\CLSID\\{6A8F3D2C-5B1E-4C7A-9F0D-2E4B8C1A7D35}\\InprocServer32")

function(render run)
  execute_process(COMMAND "${VEXPLOT}" render "${DATA}" -o "${WORK_DIR}/${run}.png"
                  RESULT_VARIABLE status ERROR_VARIABLE errors OUTPUT_QUIET)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "run ${run}: render failed (${status}): ${errors}")
  endif()
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(registered_library out)
  execute_process(COMMAND "${VEXPLOT}" settings get "${record}" "" OUTPUT_VARIABLE value RESULT_VARIABLE status)
  set(${out} "${value}" PARENT_SCOPE)
endfunction()

render(first)
if(NOT errors MATCHES "registered the OpenGL graph engine for this user")
  message(FATAL_ERROR "the first run did not say that it registered the engine: ${errors}")
endif()

render(second)
if(errors MATCHES "registered")
  message(FATAL_ERROR "the second run registered again: ${errors}")
endif()

file(COPY_FILE "${PLUGIN}" "${WORK_DIR}/users-own.so")
execute_process(COMMAND "${VEXPLOT}" register "${WORK_DIR}/users-own.so" OUTPUT_QUIET RESULT_VARIABLE status)
render(third)
registered_library(library)
if(errors MATCHES "registered" OR NOT library MATCHES "users-own.so")
  message(FATAL_ERROR "the user's own registration was replaced (${library}): ${errors}")
endif()
