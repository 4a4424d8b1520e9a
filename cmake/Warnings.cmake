# The warnings that every target of this project is built with, as errors.
add_library(cndfrmt_warnings INTERFACE)
target_compile_options(cndfrmt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                  -Werror)
# GCC 12 sees overlapping and endless copies inside std::string's operator+ (GCC bug 105329), and
# reads of empty optionals in their destructors (GCC bug 80635).
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(cndfrmt_warnings INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds
                                                  -Wno-maybe-uninitialized)
endif()

# Calls between the functions of one shared library go straight to them: nobody interposes.
target_compile_options(cndfrmt_warnings
                       INTERFACE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-fno-semantic-interposition>)
