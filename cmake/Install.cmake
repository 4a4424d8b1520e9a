# cmake --install: headers below include/zorv, both libraries, the tool with the module that it
# draws with, its manual page and completions, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)
include(cmake/PublicHeaders.cmake)

set(CNDFRMT_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/zorv)
set(CNDFRMT_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ConditionalFormatters)

set_target_properties(ConditionalFormatters PROPERTIES INSTALL_RPATH "$ORIGIN")
install(
  TARGETS ZorvHost ConditionalFormatters
  EXPORT ConditionalFormattersTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CNDFRMT_INSTALL_INCLUDEDIR}
  INCLUDES DESTINATION ${CNDFRMT_INSTALL_INCLUDEDIR})
install(
  EXPORT ConditionalFormattersTargets
  NAMESPACE ConditionalFormatters::
  DESTINATION ${CNDFRMT_INSTALL_CMAKEDIR})

if(CNDFRMT_BUILD_TOOL)
  set_target_properties(cndfrmt PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS cndfrmt RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  set_target_properties(cndfrmt_draw PROPERTIES INSTALL_RPATH "$ORIGIN/..")
  install(TARGETS cndfrmt_draw LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/cndfrmt)
  set(help ${PROJECT_BINARY_DIR}/help)
  install(FILES ${help}/cndfrmt.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${help}/cndfrmt.bash RENAME cndfrmt
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${help}/_cndfrmt DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${help}/cndfrmt.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

configure_package_config_file(
  cmake/ConditionalFormattersConfig.cmake.in ConditionalFormattersConfig.cmake
  INSTALL_DESTINATION ${CNDFRMT_INSTALL_CMAKEDIR})
# Before version 1.0 each minor version may change the interface.
write_basic_package_version_file(ConditionalFormattersConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ConditionalFormattersConfig.cmake
              ${PROJECT_BINARY_DIR}/ConditionalFormattersConfigVersion.cmake
        DESTINATION ${CNDFRMT_INSTALL_CMAKEDIR})

file(RELATIVE_PATH CNDFRMT_PC_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/ConditionalFormatters.pc.in ConditionalFormatters.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ConditionalFormatters.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
