# Part of cmake --install. It rewrites the includes of the headers that were just installed, so that
# they name each other below their common root: "DOM/CellInfo.h" becomes "zorv/DOM/CellInfo.h". A
# consumer may then have a DOM/CellInfo.h of its own. Includes of other libraries stay as they are.
#
# Input: CNDFRMT_HEADER_ROOT, the directory of the headers, and CMake's list of what it installed.
cmake_minimum_required(VERSION 3.25)

get_filename_component(root_name ${CNDFRMT_HEADER_ROOT} NAME)

set(headers "")
foreach(file IN LISTS CMAKE_INSTALL_MANIFEST_FILES)
  cmake_path(IS_PREFIX CNDFRMT_HEADER_ROOT ${file} is_header)
  if(is_header)
    file(RELATIVE_PATH header ${CNDFRMT_HEADER_ROOT} ${file})
    list(APPEND headers ${header})
  endif()
endforeach()

foreach(header IN LISTS headers)
  set(path $ENV{DESTDIR}${CNDFRMT_HEADER_ROOT}/${header})
  file(READ ${path} text)
  string(REGEX MATCHALL "#include \"[^\"]+\"" includes "${text}")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE "^#include \"(.*)\"$" "\\1" name ${include})
    if(NOT name IN_LIST headers)
      message(FATAL_ERROR "${header} includes \"${name}\", which is not installed")
    endif()
    string(REPLACE "${include}" "#include \"${root_name}/${name}\"" text "${text}")
  endforeach()
  file(WRITE ${path} "${text}")
endforeach()
