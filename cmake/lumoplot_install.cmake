# Installation of the libraries, the programs and the CMake package.
