#!/bin/sh
# Draws every graph of examples/gallery as a picture into docs/gallery. Run it after a release build.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
xydata="$root/build/release/bin/xydata"
mkdir -p "$root/docs/gallery"
cd "$root/examples/gallery" # the graphs name pictures that lie beside them
for graph in *.ltp; do
    "$xydata" render "$graph" "$root/docs/gallery/${graph%.ltp}.png"
done
