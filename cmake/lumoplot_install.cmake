# Installation of the libraries with their headers, the programs, and the CMake package that hosts find them by.

include(CMakePackageConfigHelpers)

install(TARGETS xygraph xydataeditor EXPORT lumoplot
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS lumoplot-host xydata RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lumoplot
  FILES_MATCHING PATTERN "*.h"
  PATTERN dialog EXCLUDE PATTERN dialogs EXCLUDE PATTERN controls EXCLUDE PATTERN equation_editor EXCLUDE PATTERN pictures EXCLUDE)
# The function files that the equation editor brings along, for those who pack a folder of their own.
install(DIRECTORY src/fit/equation_editor/functions/ DESTINATION ${CMAKE_INSTALL_DATADIR}/lumoplot/LFN)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/lumoplot)
install(EXPORT lumoplot NAMESPACE lumoplot:: DESTINATION ${package_folder} FILE lumoplotTargets.cmake)
configure_package_config_file(cmake/lumoplotConfig.cmake.in ${PROJECT_BINARY_DIR}/lumoplotConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lumoplotConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/lumoplotConfig.cmake ${PROJECT_BINARY_DIR}/lumoplotConfigVersion.cmake
  DESTINATION ${package_folder})
