#!/usr/bin/env bash
# Compiles what needs no toolkit (formulas with their vector kernels, the stream) for 64-bit ARM and runs its tests in an
# emulator: ./test_arm64.sh
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build/arm64
headers=$build/headers
"$root/cmake/setup_debian.sh"
"$root/cmake/setup_debian.sh" "$root/cmake/arm64/packages.txt"
mkdir -p "$headers"
cp -rn /usr/include/xsimd "$headers/" # none of the system's other headers, which are of another processor
cmake -G Ninja -S "$root/cmake/arm64" -B "$build" --log-level=NOTICE -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=aarch64 -DCMAKE_CXX_COMPILER=aarch64-linux-gnu-g++ \
  -DCMAKE_CROSSCOMPILING_EMULATOR="qemu-aarch64-static;-L;/usr/aarch64-linux-gnu" -DLUMOPLOT_HEADERS="$headers"
cmake --build "$build" -j2
ctest --test-dir "$build" --output-on-failure -j2
