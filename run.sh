#!/usr/bin/env bash
# Builds the plotting application and starts it: ./run.sh [FILE…] opens graph and data files, without any an example.
# Without a display it saves pictures of the plot and of the data editor instead and prints their paths.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build/release
host=$build/bin/lumoplot-host

"$root/cmake/setup_debian.sh"
cmake -S "$root" --preset release --log-level=NOTICE
cmake --build "$build" --target lumoplot-host

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$host" "$@"
fi
echo "There is no display: the program saves pictures instead." >&2
exec "$host" --shot "$build/pictures" "$@"
