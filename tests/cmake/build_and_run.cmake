# Configures, builds and runs a test project, then touches each file of TOUCH (a list,
# relative to the build) in turn and checks that the next build exports again:
# cmake -DSOURCE=... -DBUILD=... -DEXPORTER=... -DVELTRANE_SOURCE_DIR=... -DTOUCH=... -P build_and_run.cmake
file(REMOVE_RECURSE "${BUILD}")
set(touches)
foreach(file IN LISTS TOUCH)
  list(APPEND touches "touch:${file}")
endforeach()
foreach(step IN ITEMS configure build run ${touches})
  if(step STREQUAL configure)
    set(command "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${BUILD}" "-DVELTRANE_SOURCE_DIR=${VELTRANE_SOURCE_DIR}"
                "-DVELTRANE_EXPORTER=${EXPORTER}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror -pedantic")
  elseif(step STREQUAL build)
    set(command "${CMAKE_COMMAND}" --build "${BUILD}")
  elseif(step STREQUAL run)
    set(command "${BUILD}/contract")
  else()
    string(REPLACE "touch:" "" file "${step}")
    # A second's pause: make compares modification times, which some file systems keep in
    # whole seconds.
    execute_process(COMMAND "${CMAKE_COMMAND}" -E sleep 1)
    file(TOUCH "${BUILD}/${file}")
    set(command "${CMAKE_COMMAND}" --build "${BUILD}")
  endif()
  execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0 OR (step MATCHES "^touch:" AND NOT out MATCHES "Exporting bitmap font merged"))
    message(FATAL_ERROR "${step} failed (${status}) or did not export again:\n${out}")
  endif()
endforeach()
