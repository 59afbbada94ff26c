#!/usr/bin/env bash
# The main job: set up, build the `vexplot` command, the OpenGL engine and
# the viewer, register the engine in the user's settings, render every
# sample grid in every style into renders/ (headless), draw a plot from a
# Python script, and then, where a
# display exists, open the viewer on two samples, each a plot of its own
# (a tab each, the first in front).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup-debian.sh"
cmake -S "$top" -B "$top/build" -DCMAKE_BUILD_TYPE=Release
cmake --build "$top/build" -j "$(nproc)" --target vexplot vexplot_opengl vexplot-viewer vexplot_python
cd "$top"
vexplot=./build/apps/vexplot/vexplot
viewer=./build/apps/vexplot-viewer/vexplot-viewer
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
# A plot built by a Python script from NumPy, and saved as a plot file.
PYTHONPATH=build/python /usr/bin/python3 examples/gaussian_surface.py "$out/python-gaussian.png"
PYTHONPATH=build/python /usr/bin/python3 examples/ripple_plot_file.py "$out/python-ripple.vxg"
echo "run: $(ls "$out"/*.png | wc -l) pictures in $out"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec $viewer examples/peaks.3do examples/sinc.npy
fi
# No display: a picture of the viewer as it would look, drawn on a virtual one:
# the first sample in front, the second in the tab beside it.
xvfb-run -a -s "-screen 0 1280x1024x24" $viewer --screenshot "$out/viewer.png" --size 1100x800 \
  examples/peaks.3do examples/sinc.npy
echo "run: the viewer as it looks on a screen: $out/viewer.png"
