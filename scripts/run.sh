#!/usr/bin/env bash
# The main job: set up, build the `vexplot` command and the OpenGL engine,
# register the engine in the user's settings, and render every sample grid in
# every style (headless: no display is needed). The pictures go to renders/.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup-debian.sh"
cmake -S "$top" -B "$top/build" -DCMAKE_BUILD_TYPE=Release
cmake --build "$top/build" -j "$(nproc)" --target vexplot vexplot_opengl
cd "$top"
vexplot=./build/apps/vexplot/vexplot
$vexplot register
$vexplot info examples/*.3do examples/*.csv examples/*.npy

out="$top/renders"
mkdir -p "$out"
for data in examples/*.3do examples/*.npy; do
  name=$(basename "$data" | tr . _)
  for style in surface wireframe bars lines points image section; do
    $vexplot render "$data" -o "$out/$name-$style.png" --style "$style" --title "$name ($style)"
  done
done
echo "run: $(ls "$out"/*.png | wc -l) pictures in $out"
