# Installation of the libraries with their public headers, the programs with what they bring along, the CMake package
# that hosts find them by, and the Debian package of it all.

include(CMakePackageConfigHelpers)

install(TARGETS xygraph xywidgets xydataeditor EXPORT lumoplot
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(CODE "
  set(LUMOPLOT_SOURCE \"${PROJECT_SOURCE_DIR}/src\")
  set(LUMOPLOT_SCRATCH \"${PROJECT_BINARY_DIR}/public_headers\")
  set(LUMOPLOT_INCLUDE \"${CMAKE_INSTALL_INCLUDEDIR}/lumoplot\")")
install(SCRIPT cmake/install_headers.cmake)

install(TARGETS lumoplot-host xydata RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/lumoplot/examples)
# The function files that the equation editor brings along, for those who pack a folder of their own.
install(DIRECTORY src/fit/equation_editor/functions/ DESTINATION ${CMAKE_INSTALL_DATADIR}/lumoplot/LFN)
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
if(UNIX AND NOT APPLE)
  install(FILES packaging/xydata.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/lumoplot-host.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/lumoplot.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES host/icons/lumoplot.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/lumoplot)
install(EXPORT lumoplot NAMESPACE lumoplot:: DESTINATION ${package_folder} FILE lumoplotTargets.cmake)
configure_package_config_file(cmake/lumoplotConfig.cmake.in ${PROJECT_BINARY_DIR}/lumoplotConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lumoplotConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/lumoplotConfig.cmake ${PROJECT_BINARY_DIR}/lumoplotConfigVersion.cmake
  DESTINATION ${package_folder})

# cpack -G DEB, in the build folder. dpkg-shlibdeps finds what the programs need.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "Lumoplot")
set(CPACK_PACKAGE_CONTACT "Lumoplot developers <developers@lumoplot.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Data editor for XY plots")
set(CPACK_PACKAGE_DESCRIPTION
  "A plotting program, a command line tool and the libraries with the data editor that other programs load.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-base-dev, libqt6svg6-dev")
include(CPack)
