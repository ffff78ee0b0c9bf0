#!/usr/bin/env bash
# Unpacks Qt for Windows as build_qt.sh makes it into LUMOPLOT_QT_WINDOWS (~/.cache/lumoplot/qt-windows unless set): from the
# archive LUMOPLOT_QT_ARCHIVE, or else from windows/qt-VERSION-mingw64.tar.xz in a folder beside the project's. What is there
# is kept. Fails where there is no archive of the version that this system's Qt has.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
target=${LUMOPLOT_QT_WINDOWS:-$HOME/.cache/lumoplot/qt-windows}
if [ -e "$target/bin/Qt6Core.dll" ]; then exit 0; fi

version=$(dpkg-query -W -f '${Version}' qt6-base-dev | sed -E 's/^[0-9]+://; s/[^0-9.].*//')
archive=${LUMOPLOT_QT_ARCHIVE:-$(find "$root"/../*/windows -maxdepth 1 -name "qt-$version-mingw64.tar.xz" -print -quit 2>/dev/null || true)}
if [ ! -e "$archive" ]; then exit 1; fi

# Unpacked aside, so that what an interrupted run leaves is not taken for Qt.
rm -rf "$target.part"
mkdir -p "$target.part"
tar -xJf "$archive" -C "$target.part" --strip-components=1
if [ -d "$target" ]; then rmdir "$target"; fi
mv "$target.part" "$target"
