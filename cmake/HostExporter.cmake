# Pulled into a cross-compiled build (a firmware): its compiler builds for the device, but
# the exporter must run on the build machine. So it is built with the host's compiler in
# a build of its own, as the Pico SDK builds pioasm, and imported from there under the name
# veltrane_add_bitmap_font() uses.
include(ExternalProject)

set(host_dir ${PROJECT_BINARY_DIR}/host-exporter)
set(host_exporter ${host_dir}/veltrane-fontgen-export${CMAKE_HOST_EXECUTABLE_SUFFIX})
ExternalProject_Add(veltrane_host_exporter
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${host_dir}
  CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DVELTRANE_BUILD_GUI=OFF -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_INSTALL=OFF
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target veltrane-fontgen-export
  BUILD_BYPRODUCTS ${host_exporter}
  BUILD_ALWAYS ON
  INSTALL_COMMAND "")
add_executable(VeltraneFontGen::veltrane-fontgen-export IMPORTED GLOBAL)
set_target_properties(VeltraneFontGen::veltrane-fontgen-export PROPERTIES IMPORTED_LOCATION ${host_exporter})
add_dependencies(VeltraneFontGen::veltrane-fontgen-export veltrane_host_exporter)
