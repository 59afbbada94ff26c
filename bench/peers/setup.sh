#!/usr/bin/env bash
# Installs the Debian 12 packages the peer comparison runs: the three peers,
# NumPy, a virtual X server for VTK and GNU time, through the project's own
# idempotent set-up script.
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
"$top/scripts/setup-debian.sh" gnuplot-nox python3-matplotlib python3-vtk9 python3-numpy xvfb xauth time
