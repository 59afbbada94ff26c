# A plot saved by one process loads in another and draws the same picture.
# Variables: VEXPLOT, PLUGIN, DATA, WORK_DIR.
set(registry ${WORK_DIR}/plot-file-registry.db)
set(plot ${WORK_DIR}/across.vxg)
set(first ${WORK_DIR}/across-first.png)
set(second ${WORK_DIR}/across-second.png)
file(REMOVE ${registry} ${registry}-wal ${registry}-shm ${plot} ${first} ${second})
set(ENV{VEXPLOT_REGISTRY} ${registry})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}")
  endif()
endfunction()

run(${VEXPLOT} register ${PLUGIN})
# Everything the plot file carries differs from a fresh control's defaults.
run(${VEXPLOT} render ${DATA} -o ${first} --size 320x240 --palette 4 --azimuth 35 --elevation 20
    --distance 3 --xlabel Time --zlabel Level --save-plot ${plot})
run(${VEXPLOT} render ${plot} -o ${second})
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${first} ${second} RESULT_VARIABLE differ)
if(NOT differ EQUAL 0)
  message(FATAL_ERROR "the reloaded plot draws another picture: ${first} and ${second}")
endif()
