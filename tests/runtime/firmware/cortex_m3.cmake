# Cross-compiles the firmware for a Cortex-M3 with Debian's gcc-arm-none-eabi; the firmware's
# CMakeLists adds the start-up code, the linker script and newlib's semihosting library.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-none-eabi-gcc)
set(CMAKE_CXX_COMPILER arm-none-eabi-g++)
# No start-up code or linker script yet when CMake tries the compilers.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_C_FLAGS_INIT "-mcpu=cortex-m3 -mthumb")
set(CMAKE_CXX_FLAGS_INIT "-mcpu=cortex-m3 -mthumb -fno-exceptions -fno-rtti")
