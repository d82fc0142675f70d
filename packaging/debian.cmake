# `cpack` in the build folder of the preset `package` makes the two packages.

set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
add_custom_command(
  OUTPUT ${changelog}
  COMMAND ${GZIP_PROGRAM} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/changelog > ${changelog}
  DEPENDS changelog)
add_custom_target(changelog ALL DEPENDS ${changelog})
install(FILES ${changelog} copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orvane COMPONENT station)
install(FILES ${changelog} copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orvane-windows COMPONENT windows)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The developers of Orvane <orvane@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL station windows)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Each description begins with its own summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

set(CPACK_DEBIAN_STATION_PACKAGE_NAME orvane)
# The drivers of the stores are looked for at run time.
set(CPACK_DEBIAN_STATION_PACKAGE_DEPENDS libqt6sql6-sqlite)
set(CPACK_DEBIAN_STATION_PACKAGE_RECOMMENDS orvane-windows)
set(CPACK_DEBIAN_STATION_PACKAGE_SUGGESTS libqt6sql6-psql)
set(CPACK_DEBIAN_STATION_DESCRIPTION
"calibration and test station for one dual-band GSM handset
Takes a handset on a serial line into test mode, calibrates its receiver and
its transmitter in two bands with a radio test set on GPIB, VXI-11 or a
socket, saves the result, calibrates the battery thresholds and comes to a
verdict. A virtual bench stands in where there is no hardware.

This package runs without a screen.")

set(CPACK_DEBIAN_WINDOWS_PACKAGE_NAME orvane-windows)
set(CPACK_COMPONENT_WINDOWS_DEPENDS station)
# Some texts of the station are in Hangul.
set(CPACK_DEBIAN_WINDOWS_PACKAGE_RECOMMENDS fonts-nanum)
set(CPACK_DEBIAN_WINDOWS_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_WINDOWS_DESCRIPTION
"windows of the calibration and test station orvane
The panels of the station on a desktop. They open when orvane is started
without --headless.")

include(CPack)
