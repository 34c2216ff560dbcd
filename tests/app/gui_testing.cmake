# Tests that drive the desktop program, each in an X server of its own (gui_session.sh), so
# they can run in parallel:
# veltrane_add_gui_test(NAME sources...)      in-process GoogleTest program (see README.md)
# veltrane_add_gui_script_test(NAME script.sh) bash script that starts $VELTRANE_APP

set(VELTRANE_GUI_SESSION ${CMAKE_CURRENT_LIST_DIR}/gui_session.sh)

add_library(veltrane_gui_testing STATIC
  ${CMAKE_CURRENT_LIST_DIR}/gui_test_main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/gui_test_support.cpp
)
target_link_libraries(veltrane_gui_testing PUBLIC veltrane_gui veltrane_test_support)
target_include_directories(veltrane_gui_testing PUBLIC ${CMAKE_CURRENT_LIST_DIR})

function(veltrane_add_gui_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE veltrane_gui_testing)
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR ${VELTRANE_GUI_SESSION})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 90 LABELS gui)
endfunction()

function(veltrane_add_gui_script_test name script)
  add_test(NAME ${name} COMMAND ${VELTRANE_GUI_SESSION} bash ${CMAKE_CURRENT_SOURCE_DIR}/${script})
  set_tests_properties(${name} PROPERTIES TIMEOUT 90 LABELS gui ENVIRONMENT "VELTRANE_APP=$<TARGET_FILE:veltrane-fontgen>")
endfunction()
