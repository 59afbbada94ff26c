#!/usr/bin/env bash
# Installs the Debian 12 packages Vexplot builds and tests with. Idempotent:
# packages already present are left alone, and the package lists are only
# refreshed when something has to be installed. Needs root (or sudo).
# Usage: setup-debian.sh [PACKAGE...]: with arguments it installs those
# packages instead of the project's own (the benchmark peers use this).
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  libsqlite3-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  libegl-dev libopengl-dev libgl-dev libegl-mesa0 libgl1-mesa-dri
  libfreetype-dev libfontconfig-dev fonts-liberation
  libpng-dev zlib1g-dev
  qt6-base-dev qt6-qpa-plugins
  pybind11-dev python3-dev python3-numpy
  xvfb xauth
  locales
)

[ $# -eq 0 ] || packages=("$@")

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

# The locale tests run under a comma locale; generated once when missing.
ensure_comma_locale() {
  [ $# -eq 0 ] || return 0
  command -v locale-gen >/dev/null || return 0
  locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$' && return 0
  echo "setup: generating the de_DE.UTF-8 locale"
  "${as_root[@]}" sed -i 's/^# *\(de_DE.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | "${as_root[@]}" tee -a /etc/locale.gen >/dev/null
  "${as_root[@]}" locale-gen >/dev/null
}

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all ${#packages[@]} packages present"
  ensure_comma_locale "$@"
  exit 0
fi

echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
ensure_comma_locale "$@"
