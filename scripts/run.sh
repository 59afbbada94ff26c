#!/usr/bin/env bash
# The main job: set up, build, and show what the sample data sets hold.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup-debian.sh"
"$top/scripts/build.sh" "$top/build" -DCMAKE_BUILD_TYPE=Release
cd "$top"
./build/apps/vexplot/vexplot info examples/*.3do examples/*.csv examples/*.npy
