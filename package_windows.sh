#!/usr/bin/env bash
# Packs what ./test_windows.sh has built into build/lumoplot-windows.zip, to be unpacked anywhere on Windows and run from there:
# the programs with all DLLs beside them, Qt's plugins, function files, examples and the licences. Then runs it under Wine in
# a prefix that nothing was set up in.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build/windows
pack=$root/build/windows-package/lumoplot
cd "$root"
rm -rf "$root/build/windows-package"
mkdir -p "$pack/LFN" "$pack/licences"

cp build/windows/bin/{lumoplot-host.exe,xydata.exe,xygraph.dll,xywidgets.dll,xydataeditor.dll} "$pack/"
cmake/windows/collect_runtime.sh "$pack" "$pack"
rm "$pack/Qt6Test.dll" "$pack/platforms/qoffscreen.dll"
x86_64-w64-mingw32-strip "$pack"/*.exe "$pack"/*.dll "$pack"/*/*.dll
find src -name '*.lfn' -exec cp {} "$pack/LFN/" \;
cp -r examples "$pack/"
cp README.md "$pack/README.txt"

# Whose texts are: our own, and those of what is linked or lies beside it, from the Debian packages it was built from.
cp LICENSE "$pack/licences/lumoplot.txt"
licence() { # NAME PACKAGE…
  for package in "${@:2}"; do
    if [ -e "/usr/share/doc/$package/copyright" ]; then
      cp -L "/usr/share/doc/$package/copyright" "$pack/licences/$1.txt"
      return
    fi
  done
  echo "windows: no licence text of $1" >&2
}
licence qt libqt6core6 qt6-base-dev
licence qt-svg libqt6svg6 qt6-svg-dev
licence gcc-runtime gcc-mingw-w64-x86-64-posix-runtime gcc-mingw-w64-base
licence winpthreads mingw-w64-x86-64-dev mingw-w64-common
licence xsimd libxsimd-dev
licence kissfft libkissfft-dev
licence zlib libz-mingw-w64-dev
licence zstd libzstd-dev
licence cli11 libcli11-dev
licence nlohmann-json nlohmann-json3-dev
cp /usr/share/common-licenses/{LGPL-3,GPL-3} "$pack/licences/"

rm -f build/lumoplot-windows.zip
(cd "$root/build/windows-package" && zip -q -9 -r ../lumoplot-windows.zip lumoplot)
du -h build/lumoplot-windows.zip

# The proof, from the archive itself.
fresh=$root/build/windows-package/fresh
mkdir -p "$fresh"
export WINEPREFIX=$fresh/wine WINEDEBUG=-all
trap 'wineserver -k || true' EXIT
(cd "$fresh" && cmake -E tar xf "$root/build/lumoplot-windows.zip")
[ "$("$root/cmake/windows/wine.sh" "$fresh/lumoplot/xydata.exe" eval 1+1 | tr -d '\r')" = 2 ]
wineserver -k || true # it had no display
xvfb-run -a "$root/cmake/windows/wine.sh" "$fresh/lumoplot/lumoplot-host.exe" --shot "Z:$fresh/pictures"
ls "$fresh"/pictures/*.png
