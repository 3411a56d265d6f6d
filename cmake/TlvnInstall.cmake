# Installs library, headers and a package for find_package(TlvnMisc).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS TlvnMisc EXPORT TlvnMiscTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES TlvnMisc.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TlvnMisc)
foreach(layer platform framework foundation charcode mailtext persist ui editor)
  install(DIRECTORY ${layer} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TlvnMisc
    FILES_MATCHING PATTERN "*.h" PATTERN "tables" EXCLUDE)
endforeach()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TlvnMisc)
install(EXPORT TlvnMiscTargets NAMESPACE TlvnMisc:: DESTINATION ${package_dir})
configure_package_config_file(cmake/TlvnMiscConfig.cmake.in
  "${PROJECT_BINARY_DIR}/TlvnMiscConfig.cmake" INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TlvnMiscConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/TlvnMiscConfig.cmake"
  "${PROJECT_BINARY_DIR}/TlvnMiscConfigVersion.cmake" DESTINATION ${package_dir})
