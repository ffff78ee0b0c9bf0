# Toolchain file: Windows programs made on Debian by MinGW-w64 with POSIX threads. Qt's own toolchain file loads it.
# CMAKE_FIND_ROOT_PATH of the caller: folders with what is built for Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_AR x86_64-w64-mingw32-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB x86_64-w64-mingw32-gcc-ranlib-posix CACHE FILEPATH "")
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# GCC takes registers for kept that its own copy of an inline function keeps, though for Windows the linker may choose another
# object file's copy, of another optimisation.
set(CMAKE_C_FLAGS_INIT -fno-ipa-ra)
set(CMAKE_CXX_FLAGS_INIT -fno-ipa-ra)
