# `make package`: one Debian package per install component, under /usr, with the run-time
# dependencies dpkg-shlibdeps (dpkg-dev) reads from each package's own programs. The
# exporter's package is all a firmware build needs, and so pulls in no GUI toolkit; the
# desktop program's needs the exporter's of the same version.
get_cmake_property(veltrane_components COMPONENTS)
if("Unspecified" IN_LIST veltrane_components)
  message(FATAL_ERROR "an install() rule names no COMPONENT (exporter or desktop), so its files would be in no package")
endif()
set(CPACK_COMPONENTS_ALL ${veltrane_components})

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_NAME veltrane-fontgen)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# 1.00 was one package, veltrane-fontgen, that held the exporter too; the two packages of
# the same program version come after it as its Debian revision 1.
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PACKAGE_CONTACT "Veltrane Bitmap Font Generator developers <veltrane-fontgen@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_EXPORTER_PACKAGE_NAME veltrane-fontgen-export)
set(CPACK_DEBIAN_EXPORTER_PACKAGE_SECTION devel)
# Its files were the single package's: an upgrade takes them over and replaces that package.
set(CPACK_DEBIAN_EXPORTER_PACKAGE_REPLACES "veltrane-fontgen (<< 1.00-1)")
set(CPACK_DEBIAN_EXPORTER_PACKAGE_BREAKS "veltrane-fontgen (<< 1.00-1)")
# The example firmware draws with DejaVu Sans unless told otherwise.
set(CPACK_DEBIAN_EXPORTER_PACKAGE_SUGGESTS fonts-dejavu-core)
set(CPACK_DEBIAN_EXPORTER_DESCRIPTION
  "bitmap font source code for small displays, from the command line
Turns a TrueType or OpenType font into C++ source of bitmap fonts for firmware:
8-bit coverage pixels of every glyph in four rotations, kerning tables and font records.
The package holds the command-line exporter veltrane-fontgen-export with its manual page,
a CMake package (find_package(VeltraneFontGen)) whose veltrane_add_bitmap_font()
generates fonts at build time, and an example firmware that uses it.")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME veltrane-fontgen)
set(CPACK_COMPONENT_DESKTOP_DEPENDS exporter)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_DESKTOP_DESCRIPTION
  "bitmap font source code for small displays, desktop program
Turns a TrueType or OpenType font into C++ source of bitmap fonts for firmware:
8-bit coverage pixels of every glyph in four rotations, kerning tables and font records.
The package holds the desktop program, which previews the glyphs and exports them.")

# Checks what it built: see the script.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CheckDebianPackages.cmake)
include(CPack)
