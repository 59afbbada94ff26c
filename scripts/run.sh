#!/usr/bin/env bash
# The main job: set up, build the `vexplot` command, and show what the sample
# data sets hold once loaded and bound.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup-debian.sh"
cmake -S "$top" -B "$top/build" -DCMAKE_BUILD_TYPE=Release
cmake --build "$top/build" -j "$(nproc)" --target vexplot
cd "$top"
./build/apps/vexplot/vexplot info examples/*.3do examples/*.csv examples/*.npy
