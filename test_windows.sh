#!/usr/bin/env bash
# Builds everything for Windows with MinGW-w64 and runs every test under Wine: ./test_windows.sh [CTEST OPTION…]. Qt for
# Windows is taken from LUMOPLOT_QT_WINDOWS (~/.cache/lumoplot/qt-windows unless set). When it is missing there, it is unpacked
# from an archive (cmake/windows/unpack_qt.sh) or built, which takes half an hour. WERROR=ON makes warnings errors.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build/windows
export LUMOPLOT_QT_WINDOWS=${LUMOPLOT_QT_WINDOWS:-$HOME/.cache/lumoplot/qt-windows}

cd "$root"
cmake/setup_debian.sh
cmake/setup_debian.sh cmake/windows/packages.txt
cmake/windows/unpack_qt.sh || cmake/windows/build_qt.sh
cmake/windows/build_libraries.sh build/windows-libraries
cmake --preset windows --log-level=NOTICE -D LUMOPLOT_WERROR="${WERROR:-OFF}" \
  -D QT_HOST_PATH_CMAKE_DIR="$(cmake/windows/host_packages.sh)"
cmake --build --preset windows

# The programs find Qt and what it loads beside themselves.
cmake/windows/collect_runtime.sh "$build/bin" "$build/bin"
mkdir -p "$build/bin/lib/fonts"
cp -u /usr/share/fonts/truetype/{dejavu,liberation}/*.ttf "$build/bin/lib/fonts/"

# A display and a Wine server of our own for as long as the tests take.
export WINEPREFIX=$build/wine WINEDEBUG=-all
export WINEPATH=Z:$build-libraries/usr/bin # with sqlite3.exe
mkdir -p "$WINEPREFIX"
end() {
  wineserver -k || true
  if [ -n "${display_server:-}" ]; then kill "$display_server"; fi
}
trap end EXIT
Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp 3>"$build/display" 2>/dev/null &
display_server=$!
for _ in $(seq 50); do [ -s "$build/display" ] && break; sleep 0.1; done
DISPLAY=:$(cat "$build/display")
export DISPLAY
cmake/windows/prepare_wine.sh
wineserver -p
cmake/windows/wine.sh wineboot
status=0
ctest --preset windows "$@" || status=$?

# What can not be tested there is told, and must stay little.
skipped=$(sed -nE 's/.*\[  SKIPPED \] ([A-Za-z0-9_]+\.[A-Za-z0-9_\/]+).*/\1/p' "$build/Testing/Temporary/LastTest.log" | sort -u)
count=$(grep -c . <<< "$skipped" || true)
printf 'Skipped under Wine: %s\n%s\n' "$count" "$skipped"
if [ "$count" -gt 10 ] && [ -e "$build-libraries/usr/bin/sqlite3.exe" ]; then status=1; fi
exit "$status"
