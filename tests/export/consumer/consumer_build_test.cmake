# Exports fonts with the command-line exporter, compiles each export into a consumer
# program the way a firmware build would (strict C++20, warnings as errors) and runs it:
# it draws a text from the records in all four rotations against FreeType's own drawing.
# Variables: EXPORTER, CXX, CXX_FLAGS (extra, space-separated; may be empty), SOURCE_DIR
# (tests/export), FREETYPE_INCLUDE_DIRS, FREETYPE_LIBRARIES, TEST_FONT, WORK_DIR.

separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS}")
foreach(dir IN LISTS FREETYPE_INCLUDE_DIRS)
  list(APPEND flags -isystem ${dir})
endforeach()
set(DEJAVU /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf)
# Each case: font, height, exported codes, text. The texts hold kerned pairs (AV, VA,
# AT, Ta, Yo, LT, V. ...), ink below the baseline and left of the pen, and blanks.
set(CASES
  "${TEST_FONT}|16|32,46,65,84,86,106|AVAT V.jA TAVj AV"
  "${TEST_FONT}|32|32,46,65,84,86,106|AVAT V.jA TAVj AV"
  "${DEJAVU}|16|32-126|AVAWAY Ta. Yo, LTV jumpy {Wolf} T.J. AV"
  "${DEJAVU}|40|32-126|AVAWAY Ta. Yo, LTV jumpy {Wolf} T.J. AV")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message(FATAL_ERROR "failed (${result}): ${command}\n${out}${err}")
  endif()
  message(STATUS "${out}")
endfunction()

set(index 0)
foreach(case IN LISTS CASES)
  string(REPLACE "|" ";" case "${case}")
  list(GET case 0 font)
  list(GET case 1 height)
  list(GET case 2 codes)
  list(GET case 3 text)
  math(EXPR index "${index} + 1")
  set(dir ${WORK_DIR}/case${index})
  file(REMOVE_RECURSE ${dir})
  file(MAKE_DIRECTORY ${dir})
  run(${EXPORTER} --height ${height} --chars ${codes} ${font} ${dir}/consumer_font.cpp)
  run(${CXX} -std=c++20 -Wall -Wextra -Werror -pedantic ${flags} -I${SOURCE_DIR} -I${dir}
      ${dir}/consumer_font.cpp ${SOURCE_DIR}/consumer/draw_with_records.cpp ${FREETYPE_LIBRARIES}
      -o ${dir}/draw_with_records)
  run(${dir}/draw_with_records ${font} ${height} "${text}")
endforeach()
