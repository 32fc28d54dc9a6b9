#!/usr/bin/env bash
# Throughput of the two batch converters on one core: 200 KVX tests into PDF
# reports and 200 ZBL tests into CSV files, each converter run once over its
# folder as a script would run it, pinned to one processor with taskset. The
# tests are the sample files under samples/, which the sample writers
# (tools/kvxsamples, tools/zblsamples) made, copied round-robin under 200
# names. Prints the files per second of each, start-up included.
#   bench/converters.sh [count]        (default 200 of each)
# The build folder is build-release unless QUENBY_BUILD_DIR names another; a
# folder that is configured already is used as it is.
set -euo pipefail
cd "$(dirname "$0")/.."

count=${1:-200}
build=${QUENBY_BUILD_DIR:-build-release}
[ -f "$build/build.ninja" ] ||
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=OFF >/dev/null
cmake --build "$build" --target kvx_report_converter zbl_report_converter >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT INT TERM
mkdir -p "$work/kvx" "$work/zbl" "$work/pdf" "$work/csv" "$work/runtime"
chmod 700 "$work/runtime"
export XDG_RUNTIME_DIR=$work/runtime XDG_CONFIG_HOME=$work/config

# Copies the samples of one kind round-robin under `count` names.
fill() {
  local suffix=$1 into=$2 i=0
  local files=()
  for f in samples/*."$suffix"; do files+=("$f"); done
  while [ "$i" -lt "$count" ]; do
    cp "${files[$((i % ${#files[@]}))]}" "$into/test-$(printf %03d "$i").$suffix"
    i=$((i + 1))
  done
}
fill txt "$work/kvx"
fill zbl "$work/zbl"

# Runs one converter over its folder; prints the rate by the clock and by the
# processor time the program used (user and system), which other loads on the
# machine do not stretch.
run() {
  local name=$1 input=$2 output=$3 suffix=$4
  local times
  times=$({ TIMEFORMAT='%R %U %S'; time taskset -c 0 "$build/bin/$name" "$input" -o "$output" \
    --lang "$build/bin/en.lng" >/dev/null; } 2>&1)
  local written
  written=$(find "$output" -name "*.$suffix" | wc -l)
  awk -v n="$written" -v t="$times" -v name="$name" -v s="$suffix" 'BEGIN {
    split(t, a, " "); cpu = a[2] + a[3]
    printf "%s: %d %s files in %.2f s, %.1f files/s; processor %.2f s, %.1f files/s\n",
      name, n, s, a[1], n / a[1], cpu, n / cpu }'
}
run kvx_report_converter "$work/kvx" "$work/pdf" pdf
run zbl_report_converter "$work/zbl" "$work/csv" csv
