# Install rules: the library, its headers, a CMake package (find_package(OrvBase)) and orv-base.pc.
include(CMakePackageConfigHelpers)

install(TARGETS orv_base EXPORT OrvBaseTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY base/include/orv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(orv_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OrvBase)
install(EXPORT OrvBaseTargets NAMESPACE orv:: DESTINATION ${orv_cmake_dir})
configure_package_config_file(cmake/OrvBaseConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/OrvBaseConfig.cmake INSTALL_DESTINATION ${orv_cmake_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/OrvBaseConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvBaseConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/OrvBaseConfigVersion.cmake DESTINATION ${orv_cmake_dir})

file(RELATIVE_PATH ORV_PC_PREFIX_FROM_PCDIR /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/orv-base.pc.in ${CMAKE_CURRENT_BINARY_DIR}/orv-base.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/orv-base.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
