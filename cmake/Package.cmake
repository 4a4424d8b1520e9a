# make package: Debian packages of what cmake --install installs. Each library has a package with
# its soname, as their versions may be installed side by side; headers, the tool, the Python module
# and the documentation have one each.
find_program(doxygen doxygen REQUIRED)
set(web_pages ${PROJECT_BINARY_DIR}/web-pages)
add_custom_target(
  cndfrmt_web_pages ALL
  COMMAND ${PROJECT_SOURCE_DIR}/scripts/make_docs.sh ${web_pages}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  VERBATIM)

set(documentation ${CMAKE_INSTALL_DATADIR}/doc/conditionalformatters-doc)
install(DIRECTORY ${web_pages}/html DESTINATION ${documentation} COMPONENT documentation)
install(
  DIRECTORY docs/
  DESTINATION ${documentation}/docs
  COMPONENT documentation
  FILES_MATCHING
  PATTERN *.md
  PATTERN *.svg
  PATTERN *.png
  PATTERN *.json)
install(FILES README.md SECURITY.md DESTINATION ${documentation} COMPONENT documentation)
install(DIRECTORY examples DESTINATION ${documentation} COMPONENT documentation)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME cndfrmt)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${CNDFRMT_PACKAGE_CONTACT})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                                                GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/prepare.cmake)
set(CPACK_COMPONENTS_ALL "")

set(host libzorvhost${CNDFRMT_SOVERSION})
set(library libconditionalformatters${CNDFRMT_SOVERSION})
set(visuals libzorvvisuals${CNDFRMT_SOVERSION})
set(workbook libzorvworkbook${CNDFRMT_SOVERSION})

# cndfrmt_package_library(COMPONENT LIBRARY NAME): what the package of a library tells dpkg: to look
# for libraries anew, and which package has the soname.
macro(cndfrmt_package_library component library name)
  string(TOUPPER ${component} upper)
  set(shlibs ${PROJECT_BINARY_DIR}/packaging/${component}/shlibs)
  file(CONFIGURE OUTPUT ${shlibs}
       CONTENT "${library} ${CNDFRMT_SOVERSION} ${name} (>= ${PROJECT_VERSION})\n")
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${shlibs} ${PROJECT_SOURCE_DIR}/packaging/triggers)
endmacro()

# cndfrmt_package(COMPONENT NAME SECTION DESCRIPTION [OURS...] [OTHERS ...]): the package of a
# component. The first line of the description is its title. It depends on packages of this project
# (OURS) in the very same version, on OTHERS, and on those whose libraries it loads.
macro(cndfrmt_package component name section description)
  cmake_parse_arguments(package "" "" "OURS;OTHERS" ${ARGN})
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}")
  list(TRANSFORM package_OURS APPEND " (= ${PROJECT_VERSION}-1)")
  list(JOIN package_OURS ", " ours)
  list(JOIN package_OTHERS ", " others)
  string(JOIN ", " CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS ${ours} ${others})
endmacro()

cndfrmt_package(
  zorvhost ${host} libs
  "document model and formula engine for conditional formats
The document model of spreadsheet tables on which libConditionalFormatters
works: values, cells, styles and conditions, with an engine for formulas.")
cndfrmt_package(
  conditionalformatters ${library} libs
  "decides which conditional formats hold for a cell
For each cell of a spreadsheet table the library says which conditional
formats hold, what style they give, and why."
  OURS ${host})
cndfrmt_package(
  zorvvisuals ${visuals} libs
  "colour scales, data bars and icon sets of spreadsheet cells
The colour, the bar and the icon that a cell of a spreadsheet table gets
beside its style."
  OURS ${host} ${library})
cndfrmt_package(
  zorvworkbook ${workbook} libs
  "reads .xlsx workbooks with their conditional formats
Workbooks as documents in memory, with their sheets, rules and findings, ready
to be asked for the style of each cell."
  OURS ${host} ${library} ${visuals})
cndfrmt_package_library(zorvhost libZorvHost ${host})
cndfrmt_package_library(conditionalformatters libConditionalFormatters ${library})
cndfrmt_package_library(zorvvisuals libZorvVisuals ${visuals})
cndfrmt_package_library(zorvworkbook libZorvWorkbook ${workbook})
cndfrmt_package(
  development libconditionalformatters-dev libdevel
  "development files for conditional formats of spreadsheets
Headers, and what CMake and pkg-config need to find the libraries
libConditionalFormatters, libZorvHost, libZorvVisuals and libZorvWorkbook."
  OURS ${host} ${library} ${visuals} ${workbook}
  OTHERS libboost-dev)
cndfrmt_package(
  tool cndfrmt utils
  "why is this cell red: conditional formats of workbooks explained
cndfrmt reads a spreadsheet workbook and says which conditional formats hold
for which cells, what style they give, and why. It draws sheets as pages and
pictures, and finds rules that are wrong, dead, repeated or slow."
  OURS ${host} ${library}
  OTHERS "fonts-dejavu-core | fonts-liberation")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
# They load no libraries: CPack would start a program for each of their files to see that.
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
cndfrmt_package(
  documentation conditionalformatters-doc doc
  "documentation of cndfrmt and libConditionalFormatters
Pages about the tool and the libraries, as text and as web pages with the
reference of the headers, and examples that use them.")

if(CNDFRMT_HAS_PYTHON)
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  cndfrmt_package(
    python python3-conditional-formatters python
    "conditional formats of workbooks, for Python
The module conditional_formatters opens workbooks and gives resolved styles,
colour scales, data bars and icons of their cells, with the reasons."
    OURS ${host} ${library}
    OTHERS "python3 (>= 3.${Python_VERSION_MINOR})" "python3 (<< 3.${next_minor})")
  # It draws pictures with the tool's module.
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "cndfrmt (= ${PROJECT_VERSION}-1)")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-numpy, python3-openpyxl, python3-pandas")
endif()

include(CPack)
