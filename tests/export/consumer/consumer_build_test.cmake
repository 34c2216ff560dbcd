# Exports fonts with the test exporter, compiles each export into a consumer program
# the way a firmware build would (strict C++20, warnings as errors), and lets the
# program compare the strings it draws from the records with FreeType's own drawing.
# Variables: EXPORT_TOOL, CXX, SOURCE_DIR (tests/export), TEST_FONT, WORK_DIR.

set(DEJAVU /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf)
# Each case: font, height, exported codes, text. The texts hold kerned pairs (AV, VA,
# AT, Ta, Yo, LT, V. ...), ink below the baseline and left of the pen, and blanks.
set(CASES
  "${TEST_FONT}|16|32 46 65 84 86 106|AVAT V.jA TAVj AV"
  "${TEST_FONT}|32|32 46 65 84 86 106|AVAT V.jA TAVj AV"
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
  separate_arguments(codes)
  math(EXPR index "${index} + 1")
  set(dir ${WORK_DIR}/case${index})
  file(REMOVE_RECURSE ${dir})
  file(MAKE_DIRECTORY ${dir})

  string(LENGTH "${text}" length)
  math(EXPR width "(${length} + 4) * ${height}")
  math(EXPR rows "2 * ${height}")
  math(EXPR pen "${height} / 2")
  math(EXPR baseline "${height} * 3 / 2")

  run(${EXPORT_TOOL} export ${font} ${height} ${dir} consumer_font ${codes})
  run(${EXPORT_TOOL} reference ${font} ${height} "${text}" ${pen} ${baseline} ${width} ${rows} ${dir}/reference.bin)
  run(${CXX} -std=c++20 -Wall -Wextra -Werror -pedantic
      -I${SOURCE_DIR} -I${dir}
      ${dir}/consumer_font.cpp ${SOURCE_DIR}/consumer/draw_with_records.cpp
      -o ${dir}/draw_with_records)
  run(${dir}/draw_with_records "${text}" ${pen} ${baseline} ${width} ${rows} ${dir}/reference.bin)
endforeach()
