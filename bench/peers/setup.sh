#!/usr/bin/env bash
# Installs the Debian 12 packages the peer comparison runs: the three peers,
# NumPy, a virtual X server for VTK and GNU time. Idempotent: packages
# already present are left alone, and the package lists are only refreshed
# when something has to be installed. Needs root (or sudo) only then.
set -euo pipefail

packages=(gnuplot-nox python3-matplotlib python3-vtk9 python3-numpy xvfb xauth time)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "peers setup: all ${#packages[@]} packages present"
  exit 0
fi

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "peers setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
