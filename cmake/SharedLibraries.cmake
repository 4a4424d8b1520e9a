# Before version 1.0 each minor version may change the binary interface, afterwards each major one;
# docs/compatibility.md says how that is checked.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(CNDFRMT_SOVERSION 0.${PROJECT_VERSION_MINOR})
else()
  set(CNDFRMT_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

# cndfrmt_shared_library(TARGET NAME)
#
# A library that is installed. It exports what TARGET_Exports.map says, and its consumers call it
# ConditionalFormatters::NAME, in this tree as elsewhere.
function(cndfrmt_shared_library target name)
  add_library(ConditionalFormatters::${name} ALIAS ${target})
  set(exports ${CMAKE_CURRENT_SOURCE_DIR}/${target}_Exports.map)
  target_link_options(${target} PRIVATE LINKER:--version-script=${exports})
  set_target_properties(
    ${target} PROPERTIES EXPORT_NAME ${name} VERSION ${PROJECT_VERSION}
                         SOVERSION ${CNDFRMT_SOVERSION} LINK_DEPENDS ${exports})
endfunction()
