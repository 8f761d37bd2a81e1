# A file the program wrote comes out of resave byte for byte: INPUT is resaved to first.EAY,
# first.EAY to second.EAY, and the two must be equal (and equal to INPUT but for the version
# record, which the unit tests check with a fixed version).
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
foreach(step "${INPUT};${WORK}/first.EAY" "${WORK}/first.EAY;${WORK}/second.EAY")
  execute_process(COMMAND ${PROGRAM} resave ${step} RESULT_VARIABLE code ERROR_VARIABLE err)
  if(NOT code EQUAL 0 OR NOT err STREQUAL "")
    message(FATAL_ERROR "resave ${step}: exit ${code}\n${err}")
  endif()
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/first.EAY ${WORK}/second.EAY
                RESULT_VARIABLE differ)
if(differ)
  message(FATAL_ERROR "resave changed a file it wrote itself")
endif()
# Everything before the version record, which is last: CR LF "V".
foreach(file input first)
  if(file STREQUAL "input")
    file(READ ${INPUT} hex HEX)
  else()
    file(READ ${WORK}/first.EAY hex HEX)
  endif()
  string(FIND "${hex}" "0d0a56" at REVERSE)
  string(SUBSTRING "${hex}" 0 ${at} ${file}_body)
endforeach()
if(NOT input_body STREQUAL first_body)
  message(FATAL_ERROR "resave changed ${INPUT}")
endif()
