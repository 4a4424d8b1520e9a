# Runs when the files of all packages lie in their folders, before they are packed: adds the files
# that Debian wants in every package, and packs those that it wants packed. CPack gives the
# variables.
cmake_minimum_required(VERSION 3.25)

set(day_and_time "%a, %d %b %Y %H:%M:%S +0000")
string(TIMESTAMP date "${day_and_time}" UTC)  # of SOURCE_DATE_EPOCH

function(pack file)
  execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(doc ${root}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${doc})
  file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/copyright ${doc}/copyright)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${doc}/changelog.Debian @ONLY)
  file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md ${doc}/changelog)
  pack(${doc}/changelog.Debian)
  pack(${doc}/changelog)
  file(GLOB manual_pages ${root}/man/man*/*)
  foreach(page IN LISTS manual_pages)
    pack(${page})
  endforeach()
  execute_process(COMMAND chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_DIRECTORY}/${component}
                          COMMAND_ERROR_IS_FATAL ANY)
endforeach()
