#!/usr/bin/env bash
# Start-up of Quenby against a bare Qt Widgets main window, in one run: each
# program is started in turn, alternating, under a virtual X server, and the
# time from launch to its main window painted on screen is taken; the script
# prints the median of each and their ratio.
#   bench/startup.sh [runs]        (default 10 runs of each)
# Quenby starts on a data folder and a language already set, in a throw-away
# configuration folder, so no dialog stops it. The build folder is
# build-release unless QUENBY_BUILD_DIR names another.
set -euo pipefail
cd "$(dirname "$0")/.."

runs=${1:-10}
bash tools/install-deps.sh
build=${QUENBY_BUILD_DIR:-build-release}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=ON >/dev/null
cmake --build "$build" --target quenby bench_bare_window >/dev/null

work=$(mktemp -d)
display=:$(( 200 + RANDOM % 100 ))
Xvfb "$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null || true; rm -rf "$work"' EXIT INT TERM
sleep 1

mkdir -p "$work/config" "$work/data" "$work/runtime"
chmod 700 "$work/runtime"
printf '[UserFileTransfert]\nKVX=%s\nZBL=%s\n' "$work/data" "$work/data" >"$work/config/Quenby.ini"
printf '[Language]\nLanguage=ENGLISH\n' >"$work/config/Quenbey.ini"

# Milliseconds from launch to the first paint of the program's main window.
startup_ms() {
  local start shown
  start=$(date +%s%N)
  shown=$(DISPLAY=$display XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/runtime \
    QUENBY_STARTUP_PROBE=1 "$@" | sed -n 's/^shown //p')
  echo $(( (shown - start) / 1000 ))
}

median() { sort -n | awk '{ v[NR] = $1 } END { m = int((NR + 1) / 2); printf "%.1f", (NR % 2 ? v[m] : (v[m] + v[m + 1]) / 2) / 1000 }'; }

# One of each first, not counted: the files come into the page cache.
startup_ms "$build/bench/bench_bare_window" >/dev/null
startup_ms "$build/bin/quenby" >/dev/null
bare=()
quenby=()
for _ in $(seq "$runs"); do
  bare+=("$(startup_ms "$build/bench/bench_bare_window")")
  quenby+=("$(startup_ms "$build/bin/quenby")")
done
bare_ms=$(printf '%s\n' "${bare[@]}" | median)
quenby_ms=$(printf '%s\n' "${quenby[@]}" | median)
echo "bare Qt window  median of $runs: $bare_ms ms"
echo "Quenby          median of $runs: $quenby_ms ms"
awk -v q="$quenby_ms" -v b="$bare_ms" 'BEGIN { printf "ratio: %.2f\n", q / b }'
