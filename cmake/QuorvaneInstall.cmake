include(CMakePackageConfigHelpers)

set(QUORVANE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QuorvaneExt)

install(TARGETS QuorvaneExt EXPORT QuorvaneExtTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QuorvaneExt)

# Only the two public headers and the algorithm headers are part of the API;
# everything under QuorvaneExt/ and QuorvaneExt/protocol/ stays private.
install(DIRECTORY QuorvaneExt/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QuorvaneExt
  FILES_MATCHING PATTERN "*.h")
install(DIRECTORY Libraries/Helper/helper DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QuorvaneExt
  FILES_MATCHING PATTERN "*.h")

install(EXPORT QuorvaneExtTargets NAMESPACE QuorvaneExt:: DESTINATION ${QUORVANE_CMAKE_DIR})

configure_package_config_file(cmake/QuorvaneExtConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExtConfig.cmake
  INSTALL_DESTINATION ${QUORVANE_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExtConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExtConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExtConfigVersion.cmake
  DESTINATION ${QUORVANE_CMAKE_DIR})

configure_file(cmake/QuorvaneExt.pc.in ${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExt.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QuorvaneExt.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
