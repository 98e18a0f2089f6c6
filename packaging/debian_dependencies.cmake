# Run by cpack: the packages that hold the libraries the programs name and those that they load later.
set(scratch ${CPACK_PACKAGE_DIRECTORY}/dependencies)
file(WRITE ${scratch}/debian/control "Source: corvane\nPackage: corvane\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps --ignore-missing-info -O ${CPACK_CORVANE_BINARIES} WORKING_DIRECTORY ${scratch}
                OUTPUT_VARIABLE found ERROR_VARIABLE remarks RESULT_VARIABLE failed)
if(failed OR NOT found MATCHES "shlibs:Depends=([^\n]+)")
  message(FATAL_ERROR "dpkg-shlibdeps does not tell the packages of the libraries (dpkg-dev installed?)\n${remarks}")
endif()
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CMAKE_MATCH_1}, timgm6mb-soundfont")
# Qt's part for Wayland, which is loaded when it is needed.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CPACK_DEBIAN_PACKAGE_DEPENDS}, qt6-wayland")
