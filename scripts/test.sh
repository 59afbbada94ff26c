#!/usr/bin/env bash
# Every test: set up, build (warnings are errors), run the whole CTest suite.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup-debian.sh"
"$top/scripts/build.sh" "$top/build" -DCMAKE_BUILD_TYPE=Release
ctest --test-dir "$top/build" --output-on-failure -j "$(nproc)"
