# Runs the banner firmware on QEMU's MPS2 AN385 board (a Cortex-M3), its output through
# semihosting, and the same program built for the host: both must end with status 0 and print
# the same bytes.
#   cmake -DQEMU=<qemu-system-arm> -DFIRMWARE=<banner_art.elf> -DHOST=<banner_art> -P compare_with_host.cmake
execute_process(COMMAND ${HOST} RESULT_VARIABLE host_status OUTPUT_VARIABLE host_out ERROR_VARIABLE host_err)
# A firmware that never exits (a hang with interrupts off, a loop) is stopped here.
execute_process(COMMAND ${QEMU} -machine mps2-an385 -cpu cortex-m3 -display none -monitor none -serial none
                        -semihosting -kernel ${FIRMWARE}
                TIMEOUT 30 RESULT_VARIABLE arm_status OUTPUT_VARIABLE arm_out ERROR_VARIABLE arm_err)

if(NOT host_status EQUAL 0 OR NOT arm_status EQUAL 0 OR NOT arm_out STREQUAL host_out)
  message(FATAL_ERROR "The firmware ended with ${arm_status} (99: a fault) and printed\n${arm_out}${arm_err}\n"
                      "The host build ended with ${host_status} and printed\n${host_out}${host_err}")
endif()
