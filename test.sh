#!/usr/bin/env bash
# Builds everything and runs every test: ./test.sh [PRESET], the preset being release (the default) or asan.
# WERROR=ON makes warnings errors.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${1:-release}

"$root/cmake/setup_debian.sh"
cd "$root"
cmake --preset "$preset" --log-level=NOTICE -D LUMOPLOT_WERROR="${WERROR:-OFF}"
cmake --build --preset "$preset"
ctest --preset "$preset"
