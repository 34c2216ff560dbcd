# Exports fonts with the test exporter, compiles each export into a consumer program
# the way a firmware build would (strict C++20, warnings as errors), and lets the
# program compare the strings it draws from the records with FreeType's own drawing.
# Variables: EXPORT_TOOL, CXX, SOURCE_DIR (tests/export), WORK_DIR.

set(DEJAVU /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf)
# Kerned pairs (AV, AW, Ta, Yo, LT ...), descenders, a blank and punctuation.
set(TEXT "AVAWAY Ta. Yo, LTV jumpy {Wolf} T.J. AV")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message(FATAL_ERROR "failed (${result}): ${command}\n${out}${err}")
  endif()
  message(STATUS "${out}")
endfunction()

foreach(case IN ITEMS "${DEJAVU}|16" "${DEJAVU}|40")
  string(REPLACE "|" ";" case "${case}")
  list(GET case 0 font)
  list(GET case 1 height)
  set(dir ${WORK_DIR}/h${height})
  file(REMOVE_RECURSE ${dir})
  file(MAKE_DIRECTORY ${dir})

  string(LENGTH "${TEXT}" length)
  math(EXPR width "(${length} + 4) * ${height}")
  math(EXPR rows "2 * ${height}")
  math(EXPR pen "${height} / 2")
  math(EXPR baseline "${height} * 3 / 2")

  run(${EXPORT_TOOL} export ${font} ${height} ${dir} consumer_font 32-126)
  run(${EXPORT_TOOL} reference ${font} ${height} "${TEXT}" ${pen} ${baseline} ${width} ${rows} ${dir}/reference.bin)
  run(${CXX} -std=c++20 -Wall -Wextra -Werror -pedantic
      -I${SOURCE_DIR} -I${dir}
      ${dir}/consumer_font.cpp ${SOURCE_DIR}/consumer/draw_with_records.cpp
      -o ${dir}/draw_with_records)
  run(${dir}/draw_with_records "${TEXT}" ${pen} ${baseline} ${width} ${rows} ${dir}/reference.bin)
endforeach()
