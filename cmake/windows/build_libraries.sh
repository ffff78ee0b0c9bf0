#!/usr/bin/env bash
# build_libraries.sh FOLDER [benchmarks]: what the project needs beside Qt, for Windows, in FOLDER/usr: the header-only libraries of the
# system (copied, so that none of its other headers are seen), GoogleTest, zstd and SQLite, and Google Benchmark when it is asked
# for. What is there is kept; zstd and SQLite are left out where their sources can not be had.
set -euo pipefail

folder=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
mkdir -p "$folder"
folder=$(realpath "$folder")
usr=$folder/usr

cross() { # SOURCE BUILD OPTION…
  cmake -G Ninja -S "$1" -B "$folder/$2" --log-level=NOTICE -DCMAKE_TOOLCHAIN_FILE="$here/mingw64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$usr" -DBUILD_SHARED_LIBS=OFF "${@:3}"
  cmake --build "$folder/$2" -j2
  cmake --install "$folder/$2" > /dev/null
}

headers() {
  mkdir -p "$usr/include" "$usr/share/cmake" "$usr/lib/headers/cmake"
  for name in xsimd kissfft CLI nlohmann; do cp -r "/usr/include/$name" "$usr/include/"; done
  cp -r /usr/share/cmake/{CLI11,nlohmann_json} "$usr/share/cmake/"
  cp -r "$(find /usr/lib -path '*/cmake/xsimd' -type d -print -quit)" "$usr/lib/headers/cmake/" # as deep as it was
}

zstd() { # which that project joins into one file
  "$here/debian_source.sh" libzstd "$folder/zstd-src" || return 1
  (cd "$folder/zstd-src/build/single_file_libs"
    python3 combine.py -r ../../lib -x legacy/zstd_legacy.h -o zstd.c zstd-in.c > /dev/null 2>&1
    ${CMAKE_CXX_COMPILER_LAUNCHER:-} x86_64-w64-mingw32-gcc-posix -O2 -c zstd.c -o zstd.o
    x86_64-w64-mingw32-gcc-ar-posix rcs "$usr/lib/libzstd.a" zstd.o)
  cp "$folder/zstd-src/lib/zstd.h" "$folder/zstd-src/lib/zstd_errors.h" "$usr/include/"
}

sqlite() { # the library, and the program for the tests
  "$here/debian_source.sh" sqlite3 "$folder/sqlite3-src" || return 1
  (cd "$folder/sqlite3-src"
    ./configure --disable-tcl > /dev/null
    make sqlite3.c shell.c > /dev/null
    ${CMAKE_CXX_COMPILER_LAUNCHER:-} x86_64-w64-mingw32-gcc-posix -O2 -DSQLITE_ENABLE_MATH_FUNCTIONS -c sqlite3.c -o sqlite3.o
    x86_64-w64-mingw32-gcc-ar-posix rcs "$usr/lib/libsqlite3.a" sqlite3.o
    mkdir -p "$usr/bin"
    x86_64-w64-mingw32-gcc-posix -O1 shell.c sqlite3.o -static -o "$usr/bin/sqlite3.exe")
  cp "$folder/sqlite3-src/sqlite3.h" "$usr/include/"
}

google_benchmark() {
  "$here/debian_source.sh" benchmark "$folder/benchmark-src"
  cross "$folder/benchmark-src" benchmark -DBENCHMARK_ENABLE_TESTING=OFF -DGIT_VERSION=0.0.0
}

[ -d "$usr/include/xsimd" ] || headers
[ -e "$usr/lib/libgtest.a" ] || cross /usr/src/googletest gtest -DBUILD_GMOCK=OFF
[ -e "$usr/lib/libzstd.a" ] || zstd || echo "windows: without zstd, whose sources can not be had" >&2
[ -e "$usr/lib/libsqlite3.a" ] || sqlite || echo "windows: without SQLite, whose sources can not be had" >&2
if [ "${2:-}" = benchmarks ] && [ ! -e "$usr/lib/libbenchmark.a" ]; then google_benchmark; fi
