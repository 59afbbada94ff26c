#!/usr/bin/env bash
# Builds the libFuzzer targets (tests/fuzz) in build-fuzz with clang, the whole
# project instrumented with AddressSanitizer and UndefinedBehaviorSanitizer,
# then for each target:
#   1. runs the inputs under tests/fuzz/regressions/<target>/ once each, so a
#      fixed crash stays fixed;
#   2. fuzzes for SECONDS_PER_TARGET seconds on build-fuzz/corpus/<target>,
#      a working copy of the committed seeds (tests/fuzz/corpus/<target>),
#      which keeps what earlier runs found and is never committed.
# Fails on any crash, hang (10 s for one input), leak, memory blow-up or
# sanitizer report, printing the offending input's path and its first bytes.
#
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET] [TARGET...]   (default 60, all)
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
shift || true
build="$top/build-fuzz"

# The largest input libFuzzer makes per target: room for a grid of a few
# thousand doubles in the binary formats, a few thousand lines in the text.
declare -A max_len=(
  [fuzz_data_3do]=262144
  [fuzz_data_npy]=131072
  [fuzz_data_csv]=65536
  [fuzz_palette_file]=16384
  [fuzz_archive]=65536
  [fuzz_plot_file]=65536
)
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_data_3do fuzz_data_csv fuzz_data_npy fuzz_palette_file fuzz_archive fuzz_plot_file)

started=$SECONDS
"$top/scripts/setup-debian.sh"

# -O1 keeps the fuzzer fast and line tables give the reports their stacks.
# Build type None: only these flags apply, and without NDEBUG assertions stay on.
instrument="-O1 -gline-tables-only -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,address,undefined"
instrument+=" -fno-sanitize-recover=undefined"
CC=clang CXX=clang++ cmake -S "$top" -B "$build" -DCMAKE_BUILD_TYPE=None -DVEXPLOT_WERROR=ON \
  -DVEXPLOT_FUZZ=ON -DVEXPLOT_BUILD_TESTS=OFF -DVEXPLOT_BUILD_BENCH=OFF -DVEXPLOT_BUILD_PYTHON=OFF \
  -DCMAKE_C_FLAGS="$instrument" -DCMAKE_CXX_FLAGS="$instrument" >/dev/null
cmake --build "$build" -j "$(nproc)" --target "${targets[@]}"
echo "fuzz: built ${#targets[@]} targets in $((SECONDS - started)) s"

export ASAN_OPTIONS=detect_leaks=1:symbolize=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# Class lookups that miss reach the settings store: never the user's own.
export VEXPLOT_REGISTRY=:memory:
common=(-timeout=10 -rss_limit_mb=2048)

# A failing input: its path and its first bytes.
show_input() {
  echo "fuzz: failing input: $1 ($(stat -c %s "$1") bytes), first bytes:"
  od -A x -t x1z -v -N 256 "$1"
}

# The inputs libFuzzer saved for a failure.
show_artifacts() {
  local f
  for f in "$1"/crash-* "$1"/leak-* "$1"/timeout-* "$1"/oom-*; do
    [ -e "$f" ] && show_input "$f"
  done
  return 0
}

failed=()
for target in "${targets[@]}"; do
  bin="$build/tests/fuzz/$target"
  logs="$build/logs"
  artifacts="$build/artifacts/$target"
  mkdir -p "$logs" "$artifacts" "$build/corpus/$target"
  rm -f "$artifacts"/*

  regressions=()
  for f in "$top/tests/fuzz/regressions/$target"/*; do
    [ -f "$f" ] && regressions+=("$f")
  done
  if [ ${#regressions[@]} -gt 0 ]; then
    log="$logs/$target.regressions.log"
    if ! "$bin" "${common[@]}" -artifact_prefix="$artifacts/" "${regressions[@]}" >"$log" 2>&1; then
      echo "fuzz: $target FAILED on a regression input (full log: $log)"
      tail -n 60 "$log"
      input=$(grep -E '^Running: ' "$log" | tail -n 1 | sed 's/^Running: //')
      [ -n "$input" ] && show_input "$input"
      failed+=("$target (regression)")
      continue
    fi
    echo "fuzz: $target passes its ${#regressions[@]} regression inputs"
  fi

  cp "$top/tests/fuzz/corpus/$target"/* "$build/corpus/$target"/
  dict=()
  [ -f "$top/tests/fuzz/$target.dict" ] && dict=(-dict="$top/tests/fuzz/$target.dict")
  echo "fuzz: $target for $seconds s (max_len ${max_len[$target]})"
  if "$bin" "${common[@]}" "${dict[@]}" -max_total_time="$seconds" -max_len="${max_len[$target]}" \
       -print_final_stats=1 -artifact_prefix="$artifacts/" "$build/corpus/$target" >"$logs/$target.log" 2>&1; then
    grep -E '^stat::(number_of_executed_units|average_exec_per_sec|new_units_added|peak_rss_mb)' \
      "$logs/$target.log" | sed "s/^/  /" || true
  else
    echo "fuzz: $target FAILED (full log: $logs/$target.log)"
    tail -n 60 "$logs/$target.log"
    show_artifacts "$artifacts"
    failed+=("$target")
  fi
done

echo "fuzz: done in $((SECONDS - started)) s"
if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: failures: ${failed[*]}"
  exit 1
fi
