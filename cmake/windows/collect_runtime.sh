#!/usr/bin/env bash
# collect_runtime.sh FOLDER PLUGINS: copies what the programs need at run time: into FOLDER the DLLs of Qt, of GCC and of the
# threads, into PLUGINS those plugins of Qt that are used.
set -euo pipefail

qt=${LUMOPLOT_QT_WINDOWS:-$HOME/.cache/lumoplot/qt-windows}
mkdir -p "$1" "$2"
gcc=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
for name in Core Gui Widgets PrintSupport Svg Sql Test; do
  if [ -e "$qt/bin/Qt6$name.dll" ]; then cp -u "$qt/bin/Qt6$name.dll" "$1/"; fi
done
cp -u "$gcc/libstdc++-6.dll" "$gcc/libgcc_s_seh-1.dll" /usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll "$1/"
for kind in platforms imageformats iconengines sqldrivers styles; do
  if [ -d "$qt/plugins/$kind" ]; then cp -ru "$qt/plugins/$kind" "$2/"; fi
done
rm -f "$2"/platforms/qminimal.dll "$2"/platforms/qdirect2d.dll
