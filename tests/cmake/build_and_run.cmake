# Configures, builds and runs a test project: cmake -DSOURCE=... -DBUILD=... -DEXPORTER=...
# -DVELTRANE_SOURCE_DIR=... -P build_and_run.cmake
file(REMOVE_RECURSE "${BUILD}")
foreach(step IN ITEMS configure build run)
  if(step STREQUAL configure)
    set(command "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${BUILD}" "-DVELTRANE_SOURCE_DIR=${VELTRANE_SOURCE_DIR}"
                "-DVELTRANE_EXPORTER=${EXPORTER}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror -pedantic")
  elseif(step STREQUAL build)
    set(command "${CMAKE_COMMAND}" --build "${BUILD}")
  else()
    get_filename_component(name "${SOURCE}" NAME)
    set(command "${BUILD}/contract")
  endif()
  execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${step} failed (${status}):\n${out}")
  endif()
endforeach()
