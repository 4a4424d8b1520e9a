# cmake --install: headers below include/zorv, the libraries, the tool with the module that it draws
# with, its manual page and completions, a CMake package and pkg-config files. The components of
# cmake --install --component are those that packages are made of: each library by its target's name
# in small letters, development, and tool.
include(CMakePackageConfigHelpers)
include(cmake/PublicHeaders.cmake)

set(header_root ${CMAKE_INSTALL_INCLUDEDIR}/zorv)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ConditionalFormatters)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# cndfrmt_install_library(TARGET EXPORT): a library and its headers. The imported target is written
# to EXPORT.cmake.
function(cndfrmt_install_library target export)
  string(TOLOWER ${target} component)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  target_compile_features(${target} INTERFACE cxx_std_20)
  # Headers name each other below include; include/zorv is for consumers who leave out the zorv/.
  install(
    TARGETS ${target}
    EXPORT ${export}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT ${component}
            NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${header_root} COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()

# cndfrmt_install_component(NAME EXPORT): what find_package() and pkg-config need of a component.
function(cndfrmt_install_component name export)
  install(
    EXPORT ${export}
    NAMESPACE ConditionalFormatters::
    DESTINATION ${package_folder}
    COMPONENT development)
  file(RELATIVE_PATH CNDFRMT_PC_PREFIX /prefix/${pkgconfig_folder} /prefix)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfig_folder}
          COMPONENT development)
endfunction()

cndfrmt_install_library(ZorvHost ConditionalFormattersTargets)
cndfrmt_install_library(ConditionalFormatters ConditionalFormattersTargets)
cndfrmt_install_component(ConditionalFormatters ConditionalFormattersTargets)
if(TARGET ZorvWorkbook)
  cndfrmt_install_library(ZorvVisuals ConditionalFormatters-VisualsTargets)
  cndfrmt_install_component(ConditionalFormatters-Visuals ConditionalFormatters-VisualsTargets)
  cndfrmt_install_library(ZorvWorkbook ConditionalFormatters-WorkbookTargets)
  cndfrmt_install_component(ConditionalFormatters-Workbook ConditionalFormatters-WorkbookTargets)
endif()
install(CODE "set(CNDFRMT_HEADER_ROOT \"\${CMAKE_INSTALL_PREFIX}/${header_root}\")"
        COMPONENT development)
install(SCRIPT cmake/RootIncludes.cmake COMPONENT development)

configure_package_config_file(
  cmake/ConditionalFormattersConfig.cmake.in ConditionalFormattersConfig.cmake
  INSTALL_DESTINATION ${package_folder})
# Before version 1.0 each minor version may change the interface.
write_basic_package_version_file(ConditionalFormattersConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ConditionalFormattersConfig.cmake
              ${PROJECT_BINARY_DIR}/ConditionalFormattersConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT development)

if(CNDFRMT_BUILD_TOOL)
  set_target_properties(cndfrmt PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS cndfrmt RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  set_target_properties(cndfrmt_draw PROPERTIES INSTALL_RPATH "$ORIGIN/..")
  install(TARGETS cndfrmt_draw LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/cndfrmt COMPONENT tool)
  set(help ${PROJECT_BINARY_DIR}/help)
  install(FILES ${help}/cndfrmt.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES ${help}/cndfrmt.bash RENAME cndfrmt
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
  install(FILES ${help}/_cndfrmt DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
          COMPONENT tool)
  install(FILES ${help}/cndfrmt.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
endif()

# Builds what cmake --install installs, and no tests.
add_custom_target(cndfrmt_installed DEPENDS ${installed_libraries})
if(CNDFRMT_BUILD_TOOL)
  add_dependencies(cndfrmt_installed cndfrmt cndfrmt_draw cndfrmt_help)
endif()
if(CNDFRMT_HAS_PYTHON AND CNDFRMT_BUILD_TOOL)
  add_dependencies(cndfrmt_installed cndfrmt_python_package)
endif()
