# Filled in below: headers, libraries, the CMake package and the pkg-config file.
