# Installs the CMake package: find_package(VeltraneFontGen) then gives firmware builds the
# exporter as an imported target and veltrane_add_bitmap_font().
include(CMakePackageConfigHelpers)

set(VELTRANE_PACKAGE_DIR lib/cmake/VeltraneFontGen)
set(VELTRANE_RUNTIME_INSTALL_DIR ${CMAKE_INSTALL_DATADIR}/veltrane-fontgen-export/runtime)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/VeltraneFontGenConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VeltraneFontGenConfig.cmake
  INSTALL_DESTINATION ${VELTRANE_PACKAGE_DIR}
  PATH_VARS VELTRANE_RUNTIME_INSTALL_DIR)
# The exporter runs on the build machine, so a firmware built for a 32-bit target may use
# the package of a 64-bit host.
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/VeltraneFontGenConfigVersion.cmake
  COMPATIBILITY SameMajorVersion
  ARCH_INDEPENDENT)

# The packed fonts' runtime as sources, which veltrane::font_runtime builds with the
# firmware's compiler.
install(FILES ${PROJECT_SOURCE_DIR}/runtime/veltrane_font.h ${PROJECT_SOURCE_DIR}/runtime/veltrane_font.c
        DESTINATION ${VELTRANE_RUNTIME_INSTALL_DIR} COMPONENT exporter)

install(EXPORT VeltraneFontGenTargets NAMESPACE VeltraneFontGen:: DESTINATION ${VELTRANE_PACKAGE_DIR}
        COMPONENT exporter)
install(FILES
  ${PROJECT_BINARY_DIR}/VeltraneFontGenConfig.cmake
  ${PROJECT_BINARY_DIR}/VeltraneFontGenConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/VeltraneBitmapFont.cmake
  DESTINATION ${VELTRANE_PACKAGE_DIR} COMPONENT exporter)
