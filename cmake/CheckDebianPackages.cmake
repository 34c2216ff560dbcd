# Run by CPack after `make package`: the exporter's package must install where there is no
# GUI toolkit and over the old single package that held it, and the desktop program's must
# pull in the exporter of its own version.
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
foreach(deb IN LISTS CPACK_PACKAGE_FILES)
  execute_process(COMMAND dpkg-deb -f "${deb}" Package Version Depends Replaces Breaks
                  OUTPUT_VARIABLE fields RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "dpkg-deb cannot read ${deb}")
  endif()
  if(fields MATCHES "Package: veltrane-fontgen-export\n" AND
     (fields MATCHES "(wx|gtk)" OR NOT fields MATCHES "libfreetype"))
    message(FATAL_ERROR "${deb}: the exporter must depend on FreeType and on no GUI toolkit:\n${fields}")
  endif()
  if(fields MATCHES "Package: veltrane-fontgen-export\n" AND
     NOT (fields MATCHES "Replaces: veltrane-fontgen \\(<< 1\\.00-1\\)" AND
          fields MATCHES "Breaks: veltrane-fontgen \\(<< 1\\.00-1\\)"))
    message(FATAL_ERROR "${deb}: the exporter must replace and break the single package 1.00:\n${fields}")
  endif()
  if(fields MATCHES "Package: veltrane-fontgen\n" AND
     NOT fields MATCHES "veltrane-fontgen-export \\(= ${version}\\)")
    message(FATAL_ERROR "${deb}: the desktop program must depend on the exporter ${version}:\n${fields}")
  endif()
endforeach()
