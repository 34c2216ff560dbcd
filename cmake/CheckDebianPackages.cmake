# Run by CPack after `make package`: the exporter's package must install where there is no
# GUI toolkit, and the desktop program's must pull in the exporter of its own version.
foreach(deb IN LISTS CPACK_PACKAGE_FILES)
  execute_process(COMMAND dpkg-deb -f "${deb}" Package Version Depends
                  OUTPUT_VARIABLE fields RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "dpkg-deb cannot read ${deb}")
  endif()
  if(fields MATCHES "Package: veltrane-fontgen-export\n" AND
     (fields MATCHES "(wx|gtk)" OR NOT fields MATCHES "libfreetype"))
    message(FATAL_ERROR "${deb}: the exporter must depend on FreeType and on no GUI toolkit:\n${fields}")
  endif()
  if(fields MATCHES "Package: veltrane-fontgen\n" AND
     NOT fields MATCHES "veltrane-fontgen-export \\(= ${CPACK_PACKAGE_VERSION}\\)")
    message(FATAL_ERROR "${deb}: the desktop program must depend on the exporter ${CPACK_PACKAGE_VERSION}:\n${fields}")
  endif()
endforeach()
