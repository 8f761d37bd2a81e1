# Compiles a UTF-8 data file into the program as Windows-1252 bytes, so the source file stays
# readable and diffable while the program only ever sees the bytes the module and the project
# files use. A character that has no Windows-1252 form stops the build.
#
#   quillon_embed_cp1252(<target> <input file> <C++ function name>)
# adds a generated source to <target> that defines  std::string_view <function name>();

set(QUILLON_EMBED_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

function(quillon_embed_cp1252 target input function)
  get_filename_component(input_abs ${input} ABSOLUTE)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${function}_embedded.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${input_abs} -DOUTPUT=${output} -DFUNCTION=${function}
            -P ${QUILLON_EMBED_SCRIPT}
    DEPENDS ${input_abs} ${QUILLON_EMBED_SCRIPT}
    COMMENT "Embedding ${input} as Windows-1252"
    VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
  file(READ ${INPUT} hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\1," tokens "${hex}")

  # The 27 characters that Windows-1252 keeps at 0x80..0x9F.
  set(specials
    "e2,82,ac,=80," "e2,80,9a,=82," "c6,92,=83," "e2,80,9e,=84," "e2,80,a6,=85," "e2,80,a0,=86,"
    "e2,80,a1,=87," "cb,86,=88," "e2,80,b0,=89," "c5,a0,=8a," "e2,80,b9,=8b," "c5,92,=8c,"
    "c5,bd,=8e," "e2,80,98,=91," "e2,80,99,=92," "e2,80,9c,=93," "e2,80,9d,=94," "e2,80,a2,=95,"
    "e2,80,93,=96," "e2,80,94,=97," "cb,9c,=98," "e2,84,a2,=99," "c5,a1,=9a," "e2,80,ba,=9b,"
    "c5,93,=9c," "c5,be,=9e," "c5,b8,=9f,")
  foreach(pair IN LISTS specials)
    string(REPLACE "=" ";" parts "${pair}")
    list(GET parts 0 from)
    list(GET parts 1 to)
    string(REPLACE "${from}" "X${to}" tokens "${tokens}")
  endforeach()
  # Latin-1 block: U+00A0..U+00BF are C2 A0..BF, U+00C0..U+00FF are C3 80..BF.
  foreach(i RANGE 128 191)
    math(EXPR hi "${i} + 64" OUTPUT_FORMAT HEXADECIMAL)
    math(EXPR lo "${i}" OUTPUT_FORMAT HEXADECIMAL)
    string(SUBSTRING ${lo} 2 2 lo)
    string(SUBSTRING ${hi} 2 2 hi)
    string(REPLACE "c3,${lo}," "X${hi}," tokens "${tokens}")
    if(i GREATER_EQUAL 160)
      string(REPLACE "c2,${lo}," "X${lo}," tokens "${tokens}")
    endif()
  endforeach()
  # Converted bytes carry an X; a byte above 0x7F without one is UTF-8 left unconverted.
  if(tokens MATCHES "(^|,)[89a-f][0-9a-f],")
    message(FATAL_ERROR "${INPUT}: a character has no Windows-1252 form")
  endif()
  string(REPLACE "X" "" tokens "${tokens}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])," "0x\\1," bytes "${tokens}")
  string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n    " bytes "${bytes}")
  file(WRITE ${OUTPUT}.tmp
"// Generated from ${INPUT}; edit that file instead.
#include <cstddef>
#include <string_view>

namespace {
const unsigned char kBytes[] = {
    ${bytes}0x00};
}  // namespace

namespace quillon {
std::string_view ${FUNCTION}() {
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes - 1};
}
}  // namespace quillon
")
  file(COPY_FILE ${OUTPUT}.tmp ${OUTPUT} ONLY_IF_DIFFERENT)
  file(REMOVE ${OUTPUT}.tmp)
endif()
