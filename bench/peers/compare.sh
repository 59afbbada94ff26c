#!/usr/bin/env bash
# Renders the peaks grid with Vexplot and with gnuplot, matplotlib and VTK at
# 1024 x 768 and prints, per grid size, each tool's times and peak memory and
# Vexplot's ratios against the fastest peer.
#
#   compare.sh [--limit S] [--runs K] [--peers "gnuplot matplotlib vtk"] [N ...]
#
# N defaults to 256 1024 2048 4096. Each command runs as its own process,
# K times (default 2), and the best time counts. A peer that runs past the
# time limit (default 300 s) or the memory limit is stopped and shown as
# "> limit"; its second run is skipped. Environment:
#   VEXPLOT_BUILD       build tree with apps/vexplot/vexplot and
#                       bench/render_bench (default: <repo>/build)
#   PEER_MEM_LIMIT_MIB  address-space cap for each peer (default 8192), so a
#                       peer that balloons fails alone instead of pushing the
#                       machine into swap or the OOM killer
#   PEERS_WORK          where grids, pictures and results go
#                       (default: ${TMPDIR:-/tmp}/vexplot-peers)
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
repo=$(cd "$here/../.." && pwd)
python=${PYTHON:-/usr/bin/python3}   # Debian's, which has numpy, matplotlib, vtk
build=${VEXPLOT_BUILD:-$repo/build}
work=${PEERS_WORK:-${TMPDIR:-/tmp}/vexplot-peers}
limit=300
runs=2
peers="gnuplot matplotlib vtk"
mem_mib=${PEER_MEM_LIMIT_MIB:-8192}

sizes=()
while [ $# -gt 0 ]; do
  case $1 in
    --limit) limit=$2; shift 2 ;;
    --runs) runs=$2; shift 2 ;;
    --peers) peers=$2; shift 2 ;;
    -h|--help) sed -n '2,18p' "${BASH_SOURCE[0]}"; exit 0 ;;
    *) sizes+=("$1"); shift ;;
  esac
done
[ ${#sizes[@]} -gt 0 ] || sizes=(256 1024 2048 4096)

# VTK needs an X server. One virtual server for the whole comparison keeps
# its start-up out of every timing; the other tools run without DISPLAY.
if [[ " $peers " == *" vtk "* ]] && [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1280x1024x24" "${BASH_SOURCE[0]}" \
    --limit "$limit" --runs "$runs" --peers "$peers" "${sizes[@]}"
fi
display=${DISPLAY:-}

mkdir -p "$work"
results=$work/results.txt
: > "$results"

now() { date +%s.%N; }
log() { echo "$*" >&2; }

# record N TOOL STATUS JSON: one line of results.txt, read by report.py.
record() { echo "RESULT $1 $2 $3 $4" >> "$results"; }

# reason FILE: why a command failed, from its stderr, as a JSON string: the
# last line of a Python traceback, otherwise the first line (usage text
# tends to follow the actual complaint).
reason() {
  "$python" - "$1" <<'PY'
import json, sys
lines = [s for s in open(sys.argv[1], errors="replace").read().splitlines() if s.strip()]
traceback = any(s.startswith("Traceback") for s in lines)
print(json.dumps((lines[-1] if traceback else lines[0])[:200] if lines else ""))
PY
}

# classify RC STDERR_FILE: status of a command that did not succeed.
classify() {
  if [ "$1" -eq 124 ] || [ "$1" -eq 137 ]; then
    echo timeout
  elif grep -qiE 'out of memory|MemoryError|bad_alloc|allocate' "$2"; then
    echo oom
  else
    echo failed
  fi
}

# run_peer N TOOL GRID: runs the peer up to $runs times and records each
# PEER line; a run that fails or times out ends the series. A peer stopped
# after its first picture (it printed FIRST), by the time limit or the memory
# cap, keeps its whole-command time.
run_peer() {
  local n=$1 tool=$2 grid=$3 cmd rc out err status line first
  case $tool in
    gnuplot) cmd=("$here/gnuplot_peer.sh") ;;
    matplotlib) cmd=("$python" "$here/matplotlib_peer.py") ;;
    vtk) cmd=("$python" "$here/vtk_peer.py") ;;
    *) log "unknown peer $tool"; return ;;
  esac
  out=$work/$tool-$n.out err=$work/$tool-$n.err
  for ((run = 1; run <= runs; run++)); do
    log "N=$n $tool run $run ..."
    rc=0
    (
      ulimit -v $((mem_mib * 1024))
      if [ "$tool" != vtk ]; then unset DISPLAY; fi
      VEXPLOT_PEER_T0=$(now) exec timeout --kill-after=10 "$limit" \
        "${cmd[@]}" "$grid" "$work/$tool-$n.png"
    ) > "$out" 2> "$err" || rc=$?
    line=$(sed -n 's/^PEER //p' "$out" | tail -n 1)
    if [ $rc -eq 0 ] && [ -n "$line" ]; then
      record "$n" "$tool" ok "$line"
      log "  $line"
      continue
    fi
    status=$(classify $rc "$err")
    first=$(sed -n 's/^FIRST //p' "$out" | tail -n 1)
    if [ -n "$first" ]; then
      # Stopped during the re-render: the whole command did finish.
      record "$n" "$tool" partial "${first%\}}, \"limit\": $limit, \"stopped\": \"$status\"}"
      log "  $first, re-render stopped ($status)"
      break
    fi
    record "$n" "$tool" "$status" "{\"limit\": $limit, \"mem_limit_mib\": $mem_mib, \"error\": $(reason "$err")}"
    log "  $status (exit $rc)"
    break
  done
}

# run_vexplot N GRID: the whole `vexplot render` command, timed from
# outside, best of $runs; then render_bench's breakdown.
run_vexplot() {
  local n=$1 grid=$2 exe=$build/apps/vexplot/vexplot bench=$build/bench/render_bench
  local rc t0 t1 err=$work/vexplot-$n.err rss=$work/vexplot-$n.rss line
  if [ ! -x "$exe" ]; then
    record "$n" vexplot missing "{\"error\": \"no $exe\"}"
  else
    for ((run = 1; run <= runs; run++)); do
      log "N=$n vexplot render run $run ..."
      rc=0
      t0=$(now)
      env -u DISPLAY /usr/bin/time -f '%M' -o "$rss" timeout --kill-after=10 "$limit" \
        "$exe" render "$grid" -o "$work/vexplot-$n.png" --size 1024x768 --style surface \
        > /dev/null 2> "$err" || rc=$?
      t1=$(now)
      if [ $rc -ne 0 ]; then
        record "$n" vexplot "$(classify $rc "$err")" "{\"limit\": $limit, \"error\": $(reason "$err")}"
        log "  failed (exit $rc)"
        break
      fi
      line=$(awk -v a="$t0" -v b="$t1" -v kib="$(tail -n 1 "$rss")" \
        'BEGIN { printf "{\"whole\": %.4f, \"peak_rss_mib\": %.1f}", b - a, kib / 1024 }')
      record "$n" vexplot ok "$line"
      log "  $line"
    done
  fi
  if [ ! -x "$bench" ]; then
    record "$n" render_bench missing "{\"error\": \"no $bench\"}"
    return
  fi
  log "N=$n render_bench ..."
  rc=0
  env -u DISPLAY timeout --kill-after=10 "$limit" "$bench" "$n" \
    > "$work/render_bench-$n.out" 2> "$work/render_bench-$n.err" || rc=$?
  line=$(sed -n 's/^TIMES //p' "$work/render_bench-$n.out" | tail -n 1)
  if [ $rc -eq 0 ] && [ -n "$line" ]; then
    record "$n" render_bench ok "$line"
    log "  $line"
  else
    record "$n" render_bench "$(classify $rc "$work/render_bench-$n.err")" \
      "{\"limit\": $limit, \"error\": $(reason "$work/render_bench-$n.err")}"
    log "  render_bench failed (exit $rc)"
  fi
}

log "work: $work  limit: $limit s, $mem_mib MiB  runs: $runs  display: ${display:-none}"
for n in "${sizes[@]}"; do
  grid=$work/peaks-$n.npy
  log "N=$n making the grid ..."
  "$python" "$here/make_peaks.py" "$n" "$grid"
  for tool in $peers; do
    run_peer "$n" "$tool" "$grid"
  done
  run_vexplot "$n" "$grid"
  "$python" "$here/report.py" --size "$n" "$results"
  rm -f "$grid"   # 128 MiB at 4096; the next size makes its own
done
