#!/bin/sh
# Takes new and changed texts of the sources into lumoplot_de.ts, where they wait for their translation.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
lupdate=$(command -v /usr/lib/qt6/bin/lupdate || command -v lupdate)
"$lupdate" -silent -no-obsolete -locations none -source-language en -target-language de \
    -I "$root" -I "$root/src" "$root/host" "$root/src" -ts "$root/translations/lumoplot_de.ts"
grep -c 'type="unfinished"' "$root/translations/lumoplot_de.ts" || true
