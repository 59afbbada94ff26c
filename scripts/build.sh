#!/usr/bin/env bash
# Configures and builds one build tree. Usage: build.sh BUILD_DIR [cmake options...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
dir=$1; shift
cmake -S "$top" -B "$dir" -DVEXPLOT_WERROR=ON "$@"
cmake --build "$dir" -j "$(nproc)"
