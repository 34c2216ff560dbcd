# `make package`: a Debian package of what `cmake --install` installs, under /usr, with the
# run-time dependencies dpkg-shlibdeps (dpkg-dev) reads from the programs.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltrane-fontgen)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Veltrane Bitmap Font Generator developers <veltrane-fontgen@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bitmap font source code for small displays")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Turns a TrueType or OpenType font into C++ source of bitmap fonts for firmware:
8-bit coverage pixels of every glyph in four rotations, kerning tables and font records.
The package holds the desktop program, the command-line exporter veltrane-fontgen-export
with its manual page, and a CMake package (find_package(VeltraneFontGen)) whose
veltrane_add_bitmap_font() generates fonts at build time.")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
