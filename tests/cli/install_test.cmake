# Installs the build into a scratch prefix, one component (Debian package) after the other,
# and checks that the exporter's component alone runs and carries what a firmware build
# needs, that the desktop program, its entry and icon land where a desktop's application
# menu looks for them, and that a firmware-like project builds against the installed CMake
# package. Variables: BUILD_DIR, PREFIX, GUI (desktop program built), VALIDATE, CXX,
# TEST_FONT, EXPECTED, EXPECTED_GREETING and EXPECTED_PACKED (the example's outputs).

file(REMOVE_RECURSE "${PREFIX}")
function(install_component component)
  execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${PREFIX}" --component ${component}
                  RESULT_VARIABLE status OUTPUT_VARIABLE log ERROR_VARIABLE log)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "cmake --install --component ${component} failed:\n${log}")
  endif()
endfunction()
install_component(exporter)

execute_process(COMMAND "${PREFIX}/bin/veltrane-fontgen-export" --version RESULT_VARIABLE status OUTPUT_VARIABLE version)
if(NOT status EQUAL 0 OR NOT version STREQUAL "Veltrane Bitmap Font Generator v1.00\n")
  message(FATAL_ERROR "installed exporter does not run: ${status} '${version}'")
endif()
set(example_source "${PREFIX}/share/doc/veltrane-fontgen-export/examples/text-banner")
# What a firmware build needs is in the exporter's component; the desktop program is not.
if(NOT EXISTS "${PREFIX}/share/man/man1/veltrane-fontgen-export.1.gz" OR NOT EXISTS "${example_source}/ds_font.h"
   OR EXISTS "${PREFIX}/bin/veltrane-fontgen")
  message(FATAL_ERROR "the exporter's component lacks its manual page or the example, or has the desktop program")
endif()

# The example, as a firmware builds it: only find_package(VeltraneFontGen), strict warnings.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}\n${out}${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()
set(example "${PREFIX}-example")
file(REMOVE_RECURSE "${example}")
file(COPY "${TEST_FONT}" DESTINATION "${example}")
get_filename_component(font "${TEST_FONT}" NAME)
run("${CMAKE_COMMAND}" -S "${example_source}" -B "${example}" "-DCMAKE_PREFIX_PATH=${PREFIX}"
    "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror -pedantic"
    "-DCMAKE_C_FLAGS=-Wall -Wextra -Werror -pedantic" "-DBANNER_FONT=${example}/${font}")
run("${CMAKE_COMMAND}" --build "${example}")
run("${example}/text_banner" "AVAT V.jA")
file(READ "${EXPECTED}" expected)
if(NOT out STREQUAL expected OR NOT EXISTS "${example}/veltrane_fonts/banner_font.png")
  message(FATAL_ERROR "the example drew\n${out}instead of\n${expected}, or made no proof image")
endif()
# The greeting's CP1251 string, kerned through tables that name characters above 127.
run("${example}/text_banner" --greeting)
file(READ "${EXPECTED_GREETING}" expected)
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "the example's greeting drew\n${out}instead of\n${expected}")
endif()
# The packed font, its runtime from the installed sources, in the four rotations.
run("${example}/packed_banner" "AVAT V.jA")
file(READ "${EXPECTED_PACKED}" expected)
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "the packed example drew\n${out}instead of\n${expected}")
endif()
# A font file touched but not changed runs the export again, which leaves the generated
# source alone, so it is not compiled again; the build after that has nothing to do.
file(TOUCH "${example}/${font}")
run("${CMAKE_COMMAND}" --build "${example}")
set(touched "${out}")
run("${CMAKE_COMMAND}" --build "${example}")
if(NOT touched MATCHES "Exporting bitmap font" OR touched MATCHES "Building[^\n]*banner_font" OR out MATCHES "Exporting")
  message(FATAL_ERROR "rebuilds after touching the font:\n${touched}\n${out}")
endif()
if(NOT GUI)
  return()
endif()
install_component(desktop)
if(NOT EXISTS "${PREFIX}/share/man/man1/veltrane-fontgen.1.gz")
  message(FATAL_ERROR "no manual page of the desktop program in ${PREFIX}/share/man/man1")
endif()

set(entry "${PREFIX}/share/applications/veltrane-fontgen.desktop")
execute_process(COMMAND "${VALIDATE}" "${entry}" RESULT_VARIABLE status OUTPUT_VARIABLE log ERROR_VARIABLE log)
if(NOT EXISTS "${entry}" OR NOT status EQUAL 0 OR NOT log STREQUAL "")
  message(FATAL_ERROR "no valid desktop entry at ${entry}:\n${log}")
endif()

# The entry must name the installed program and the installed icon, a 128 by 128 PNG
# (its signature, then the IHDR chunk with width and height).
file(STRINGS "${entry}" exec REGEX "^Exec=")
file(STRINGS "${entry}" icon REGEX "^Icon=")
string(REGEX REPLACE "^Exec=([^ ]+).*" "\\1" program "${exec}")
string(REGEX REPLACE "^Icon=" "" icon "${icon}")
if(NOT EXISTS "${PREFIX}/bin/${program}")
  message(FATAL_ERROR "the desktop entry starts '${program}', which is not installed in bin/")
endif()
set(icon_file "${PREFIX}/share/icons/hicolor/128x128/apps/${icon}.png")
file(READ "${icon_file}" head LIMIT 24 HEX)
if(NOT head MATCHES "^89504e470d0a1a0a0000000d494844520000008000000080$")
  message(FATAL_ERROR "${icon_file} is not a 128 by 128 PNG (${head})")
endif()
