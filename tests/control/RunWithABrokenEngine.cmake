# A registration that names a file which is no plug-in: `register` refuses
# to write one, so the test writes it through `vexplot settings`, as a user
# editing the store would; the render must then fail with the loader's
# reason, and the first-run registration must not paper over it.
# Variables: VEXPLOT, NOT_A_PLUGIN, DATA, WORK_DIR.
set(registry ${WORK_DIR}/broken-engine.db)
file(REMOVE ${registry} ${registry}-wal ${registry}-shm)
set(ENV{VEXPLOT_REGISTRY} ${registry})
set(clsid "{6A8F3D2C-5B1E-4C7A-9F0D-2E4B8C1A7D35}")

execute_process(COMMAND ${VEXPLOT} register ${NOT_A_PLUGIN} RESULT_VARIABLE status ERROR_VARIABLE refusal)
if(status EQUAL 0 OR NOT refusal MATCHES "not a loadable plug-in")
  message(FATAL_ERROR "register accepted ${NOT_A_PLUGIN} (${status}): ${refusal}")
endif()
function(set_value key name value)
  execute_process(COMMAND ${VEXPLOT} settings set "${key}" "${name}" string "${value}"
                  RESULT_VARIABLE status OUTPUT_QUIET)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "cannot write the setting ${key} ${name}")
  endif()
endfunction()
set_value("Software\\Classes\\CLSID\\${clsid}\\InprocServer32" "" ${NOT_A_PLUGIN})
set_value("Software\\Kestrune Corporation\\Vexplot\\Engine" OpenGL ${clsid})
execute_process(COMMAND ${VEXPLOT} render ${DATA} -o ${WORK_DIR}/no-engine.png
                RESULT_VARIABLE status ERROR_VARIABLE messages)
if(status EQUAL 0)
  message(FATAL_ERROR "the render succeeded with a broken engine")
endif()
if(NOT messages MATCHES "invalid ELF header")
  message(FATAL_ERROR "the loader's reason is missing from the messages: ${messages}")
endif()
