#!/usr/bin/env bash
# gnuplot as a peer: the grid as a pm3d surface through the pngcairo terminal.
#
#   gnuplot_peer.sh DATA.npy OUT.png
#
# gnuplot reads the .npy file itself, as a raw float64 array after the
# header (x varies fastest, which is what `binary array=(NX,NY)` expects).
# After OUT.png it turns the view 3 degrees in azimuth and draws and writes
# OUT.rot.png, timing only that. gnuplot keeps no plot data between plots, so
# its re-render re-reads the file; from the page cache that costs a fraction
# of what drawing costs.
set -euo pipefail

t0=${VEXPLOT_PEER_T0:-$(date +%s.%N)}

# npy_layout FILE: prints "HEADER_BYTES NY NX" for a little-endian float64
# C-order 2-D .npy file, fails otherwise.
npy_layout() {
  local magic version hlen_bytes hlen header
  magic=$(head -c 6 "$1" | tail -c 5)
  [ "$magic" = "NUMPY" ] || { echo "$1: not a .npy file" >&2; return 1; }
  version=$(od -An -tu1 -j6 -N1 "$1" | tr -d ' ')
  case $version in
    1) hlen_bytes=2 ;;
    2|3) hlen_bytes=4 ;;
    *) echo "$1: unknown .npy version $version" >&2; return 1 ;;
  esac
  hlen=$(od -An -tu$hlen_bytes -j8 -N$hlen_bytes --endian=little "$1" | tr -d ' ')
  header=$(head -c $((8 + hlen_bytes + hlen)) "$1" | tail -c "$hlen")
  [[ $header == *"'descr': '<f8'"* ]] || { echo "$1: not float64" >&2; return 1; }
  [[ $header == *"'fortran_order': False"* ]] || { echo "$1: not C order" >&2; return 1; }
  [[ $header =~ \'shape\':\ \(([0-9]+),\ ([0-9]+)\) ]] || { echo "$1: not 2-D" >&2; return 1; }
  echo "$((8 + hlen_bytes + hlen)) ${BASH_REMATCH[1]} ${BASH_REMATCH[2]}"
}

if [ $# -eq 2 ] && [ "$1" = "--layout" ]; then
  npy_layout "$2"
  exit
fi
if [ $# -ne 2 ]; then
  echo "usage: gnuplot_peer.sh DATA.npy OUT.png | --layout DATA.npy" >&2
  exit 2
fi
data=$1 out=$2
rot=${out%.*}.rot.${out##*.}
[ "$rot" != "$out" ] || rot=$out.rot
layout=$(npy_layout "$data") || exit 2
read -r skip ny nx <<< "$layout"

# Elevation 30 degrees is gnuplot's rot_x = 60; its rot_z is chosen so the
# surface is seen from roughly the same side as the other peers.
rot_z=30
times=$(mktemp)
trap 'rm -f "$times" "$times.rss"' EXIT

# first_line: the FIRST line (whole-command time) once the first picture is
# written. Also printed when the run is stopped during its re-render, so the
# whole-command time survives a time limit.
first_line() {
  local t_first
  t_first=$(head -n 1 "$times")
  [ -n "$t_first" ] || return 0
  awk -v t0="$t0" -v t1="$t_first" 'BEGIN {
    printf "FIRST {\"name\": \"gnuplot\", \"whole\": %.4f, \"peak_rss_mib\": null}\n", t1 - t0 }'
}
trap 'first_line; exit 143' TERM

/usr/bin/time -f '%M' -o "$times.rss" gnuplot <<GP
set terminal pngcairo size 1024,768
set output '$out'
set view 60, $rot_z
set xrange [-3:3]
set yrange [-3:3]
set xyplane relative 0
splot '$data' binary array=($nx,$ny) skip=$skip format='%float64' \
      origin=(-3,-3,0) dx=6.0/($nx-1) dy=6.0/($ny-1) with pm3d notitle
unset output
t_first = time(0.0)
set print '$times'
print sprintf("%.6f", t_first)
unset print
set view 60, $((rot_z + 3))
set output '$rot'
replot
unset output
set print '$times' append
print sprintf("%.6f", time(0.0) - t_first)
unset print
GP
first_line
{ read -r t_first; read -r rerender; } < "$times"
peak_kib=$(tail -n 1 "$times.rss")
awk -v t0="$t0" -v t1="$t_first" -v rr="$rerender" -v kib="$peak_kib" 'BEGIN {
  printf "PEER {\"name\": \"gnuplot\", \"whole\": %.4f, \"rerender\": %.4f, \"peak_rss_mib\": %.1f}\n",
         t1 - t0, rr, kib / 1024 }'
