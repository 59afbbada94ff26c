#!/usr/bin/env bash
# Installs a built tree into a scratch prefix and uses it as a stranger
# would: every public header compiles on its own, the two example hosts
# (examples/headless_host, examples/qt_host) build against the CMake package
# and run, a program builds with pkg-config alone, the installed commands
# report their version and the installed Python package imports.
# With --deb it also builds the Debian package, installs it, imports the
# Python module with Debian's python3 and removes the package again.
#
# Usage: check-install.sh BUILD_DIR [--deb]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
deb=${2:-}
scratch=$(mktemp -d /tmp/vexplot-install.XXXXXX)
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/prefix"
# A settings store of the check's own: the user's is left alone.
export VEXPLOT_REGISTRY="$scratch/registry.db"

cmake --install "$build" --prefix "$prefix" >/dev/null
echo "check-install: installed into $prefix"

# Each public header on its own, with nothing but the prefix on the path.
for header in "$prefix"/include/vexplot/*.h; do
  name=$(basename "$header")
  printf '#include "vexplot/%s"\n' "$name" >"$scratch/header.cpp"
  c++ -std=c++20 -fsyntax-only -fPIC -I"$prefix/include" $(pkg-config --cflags Qt6Widgets) "$scratch/header.cpp"
done
echo "check-install: every public header compiles on its own"

# The example hosts, each a CMake project of its own.
for host in headless_host qt_host; do
  cmake -S "$top/examples/$host" -B "$scratch/$host" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release >/dev/null
  cmake --build "$scratch/$host" -j "$(nproc)" >/dev/null
done
"$scratch/headless_host/headless_host" "$scratch/headless.png"
QT_QPA_PLATFORM=offscreen "$scratch/qt_host/qt_host" --screenshot "$scratch/qt_host.png"
test -s "$scratch/headless.png" && test -s "$scratch/qt_host.png"
echo "check-install: the example hosts build against the package and draw"

# Without CMake: pkg-config.
cat >"$scratch/pc.cpp" <<'CPP'
#include <cstdio>
#include "vexplot/Control.h"
int main() { std::printf("%s\n", vexplot::Version()); }
CPP
PKG_CONFIG_PATH="$(dirname "$(find "$prefix" -name vexplot.pc)")" \
  sh -c 'c++ -std=c++20 "$1" -o "$2" $(pkg-config --cflags --libs vexplot) -Wl,-rpath,"$3"' _ \
  "$scratch/pc.cpp" "$scratch/pc" "$(dirname "$(find "$prefix" -name 'libvexplot.so' | head -1)")"
version=$("$scratch/pc")
test "$("$prefix/bin/vexplot" --version)" = "vexplot $version"
test "$(env -u DISPLAY -u WAYLAND_DISPLAY "$prefix/bin/vexplot-viewer" --version)" = "vexplot-viewer $version"
PYTHONPATH=$(dirname "$(find "$prefix" -type d -name vexplot -path '*dist-packages*')") \
  /usr/bin/python3 -c "import vexplot; assert vexplot.__version__ == '$version'"
echo "check-install: pkg-config, the commands and the Python package report version $version"

if [ "$deb" = "--deb" ]; then
  (cd "$build" && cpack -G DEB -B "$scratch/deb" >/dev/null)
  package=$(ls "$scratch"/deb/vexplot_*.deb)
  dpkg -i "$package" >/dev/null
  # Its first control registers the packaged engine and runs on it.
  (cd / && /usr/bin/python3 -c "import vexplot; c = vexplot.Control(settings='memory'); assert c.ready
print('check-install: python3 imports vexplot', vexplot.__version__, 'from', vexplot.__file__)")
  vexplot --version
  dpkg -r vexplot >/dev/null
  if [ -e /usr/bin/vexplot ] || [ -e /usr/lib/vexplot ] || [ -e /usr/lib/python3/dist-packages/vexplot ] \
     || [ -e /usr/include/vexplot ]; then
    echo "check-install: the package left files behind" >&2
    exit 1
  fi
  dpkg -P vexplot >/dev/null
  echo "check-install: $(basename "$package") installs and removes cleanly"
fi
