# `vexplot palette`: a file copied through it comes out the same, a
# resampled standard palette lists its colours from the highest, and bad
# arguments or files are refused with a word and without touching the
# output. In: VEXPLOT, WORK_DIR.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

function(palette expected_status)
  execute_process(COMMAND "${VEXPLOT}" palette ${ARGN}
                  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL expected_status)
    message(FATAL_ERROR "palette ${ARGN}: status ${status}, expected ${expected_status}: ${out}${err}")
  endif()
  set(err "${err}" PARENT_SCOPE)
endfunction()

file(WRITE "${WORK_DIR}/two.plt" "255,0,0\n0,0,255\n")
palette(0 "${WORK_DIR}/two.plt" -o "${WORK_DIR}/copy.plt")
file(READ "${WORK_DIR}/copy.plt" copy)
if(NOT copy STREQUAL "255,0,0\n0,0,255\n")
  message(FATAL_ERROR "the copy differs: ${copy}")
endif()

# Grey falling by thirds wraps to white at its top entry; 7 rows become 8.
palette(0 4 --rows 7 -o "${WORK_DIR}/scale.plt")
file(STRINGS "${WORK_DIR}/scale.plt" rows)
list(LENGTH rows count)
list(GET rows 0 top)
list(GET rows 7 bottom)
if(NOT count EQUAL 8 OR NOT top STREQUAL "255,255,255" OR NOT bottom STREQUAL "223,223,223")
  message(FATAL_ERROR "resampled rows: ${rows}")
endif()

foreach(bad "4;--rows;0" "4;--rows;x" "4" "4;5;-o;out.plt" "-o;out.plt")
  palette(2 ${bad})
endforeach()

palette(1 "${WORK_DIR}/missing.plt" -o "${WORK_DIR}/copy.plt")
if(NOT err MATCHES "missing.plt")
  message(FATAL_ERROR "the message does not name the file: ${err}")
endif()
palette(1 4 -o "${WORK_DIR}/no-such-folder/out.plt")
palette(1 "${WORK_DIR}" -o "${WORK_DIR}/copy.plt")
file(READ "${WORK_DIR}/copy.plt" kept)
if(NOT kept STREQUAL copy)
  message(FATAL_ERROR "a refused run changed the output: ${kept}")
endif()
