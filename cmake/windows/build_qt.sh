#!/usr/bin/env bash
# Builds Qt for Windows from Debian's source packages into LUMOPLOT_QT_WINDOWS (~/.cache/lumoplot/qt-windows unless set): Core,
# Gui, Widgets, PrintSupport, Sql with SQLite and ODBC, Test, and Svg where its source can be had. It must be of the same
# version as the Qt of this system, whose tools it uses. 20 to 40 minutes on two cores; build_qt.sh --sources only fetches
# and unpacks.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
target=${LUMOPLOT_QT_WINDOWS:-$HOME/.cache/lumoplot/qt-windows}
work=$target.build
mkdir -p "$work"
work=$(realpath "$work")

# The packaged sources of Qt lack their copy of SQLite.
add_sqlite() {
  (cd "$work/sqlite3" && ./configure --disable-tcl > /dev/null && make sqlite3.c > /dev/null)
  mkdir -p "$work/qt6-base/src/3rdparty/sqlite"
  cp "$work"/sqlite3/sqlite3.[ch] "$work/qt6-base/src/3rdparty/sqlite/"
}

fetch() {
  for name in qt6-base sqlite3; do
    [ -e "$work/$name/.complete" ] || { "$here/debian_source.sh" $name "$work/$name"; touch "$work/$name/.complete"; }
  done
  [ -e "$work/qt6-base/src/3rdparty/sqlite/sqlite3.c" ] || add_sqlite
  "$here/debian_source.sh" qt6-svg "$work/qt6-svg" ||
    echo "windows: without Qt's Svg, whose sources can not be had" >&2
}

# What the build would take from this system is for Linux.
system_libraries_off() {
  grep -rhoE 'qt_feature\("system-[a-z0-9-]+"' "$work/qt6-base" | sed -E 's/qt_feature\("system-(.*)"/\1/' |
    sort -u | sed -E 's/-/_/g; s/(.*)/-DFEATURE_system_\1=OFF/'
}

build_base() {
  mapfile -t system_off < <(system_libraries_off)
  cmake -G Ninja -S "$work/qt6-base" -B "$work/base" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
    -DCMAKE_TOOLCHAIN_FILE="$here/mingw64.cmake" -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$("$here/host_packages.sh")" \
    -DINPUT_opengl=no -DINPUT_dbus=no -DFEATURE_vulkan=OFF -DFEATURE_network=OFF -DFEATURE_xml=OFF \
    -DFEATURE_concurrent=OFF -DFEATURE_tabletevent=OFF -DFEATURE_cpp_winrt=OFF -DFEATURE_glib=OFF -DFEATURE_icu=OFF \
    -DFEATURE_zstd=OFF -DFEATURE_sql_odbc=ON -DFEATURE_sql_mysql=OFF -DFEATURE_sql_psql=OFF "${system_off[@]}" \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_PREFIX="$target"
  cmake --build "$work/base" -j2
  cmake --install "$work/base"
}

build_svg() {
  cmake -G Ninja -S "$work/qt6-svg" -B "$work/svg" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$target/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$here/mingw64.cmake" -DCMAKE_FIND_ROOT_PATH="$target" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$("$here/host_packages.sh")" \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DCMAKE_INSTALL_PREFIX="$target"
  cmake --build "$work/svg" -j2
  cmake --install "$work/svg"
}

fetch
if [ "${1:-}" = --sources ]; then exit 0; fi
build_base
if [ -d "$work/qt6-svg" ]; then build_svg; fi
rm -rf "$work"
