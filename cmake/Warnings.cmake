# The warnings that every target of this project is built with, as errors.
add_library(cndfrmt_warnings INTERFACE)
target_compile_options(cndfrmt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                  -Werror)
