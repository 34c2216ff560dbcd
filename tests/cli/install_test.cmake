# Installs the build into a scratch prefix and checks that the programs, the desktop entry
# and its icon land where a desktop's application menu looks for them, and work from there.
# Variables: BUILD_DIR, PREFIX, GUI (desktop program built), VALIDATE.

function(fail what)
  message(FATAL_ERROR "${what}")
endfunction()

file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${PREFIX}"
                RESULT_VARIABLE status OUTPUT_VARIABLE log ERROR_VARIABLE log)
if(NOT status EQUAL 0)
  fail("cmake --install failed:\n${log}")
endif()

set(exporter "${PREFIX}/bin/veltrane-fontgen-export")
execute_process(COMMAND "${exporter}" --version RESULT_VARIABLE status OUTPUT_VARIABLE version)
if(NOT status EQUAL 0 OR NOT version STREQUAL "Veltrane Bitmap Font Generator v1.00\n")
  fail("installed exporter does not run: ${status} '${version}'")
endif()

if(NOT GUI)
  return()
endif()

set(entry "${PREFIX}/share/applications/veltrane-fontgen.desktop")
if(NOT EXISTS "${entry}")
  fail("no desktop entry at ${entry}")
endif()
execute_process(COMMAND "${VALIDATE}" "${entry}" RESULT_VARIABLE status OUTPUT_VARIABLE log ERROR_VARIABLE log)
if(NOT status EQUAL 0 OR NOT log STREQUAL "")
  fail("desktop-file-validate:\n${log}")
endif()

# The entry must name the installed program and the installed icon.
file(STRINGS "${entry}" exec REGEX "^Exec=")
file(STRINGS "${entry}" icon REGEX "^Icon=")
string(REGEX REPLACE "^Exec=([^ ]+).*" "\\1" program "${exec}")
string(REGEX REPLACE "^Icon=" "" icon "${icon}")
if(NOT EXISTS "${PREFIX}/bin/${program}")
  fail("the desktop entry starts '${program}', which is not installed in bin/")
endif()

set(icon_file "${PREFIX}/share/icons/hicolor/128x128/apps/${icon}.png")
if(NOT EXISTS "${icon_file}")
  fail("no icon at ${icon_file}")
endif()
# PNG signature, then the IHDR chunk whose width and height must match the 128x128 folder.
file(READ "${icon_file}" head LIMIT 24 HEX)
if(NOT head MATCHES "^89504e470d0a1a0a0000000d494844520000008000000080$")
  fail("${icon_file} is not a 128 by 128 PNG (${head})")
endif()
