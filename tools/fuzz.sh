#!/usr/bin/env bash
# Builds the fuzz targets (clang, model code only) and runs each for a while
# from a fresh copy of its starting inputs (tests/fuzz/corpus.txt), printing how many
# inputs a second it tried. Ends with status 1 when a target found a crash, a
# hang, a leak or a sanitizer report; the input that did it is kept in the
# build folder (fuzz-findings/) with the target's log.
#
#   bash tools/fuzz.sh [build folder]      default: build-fuzz
#   FUZZ_SECONDS=300 bash tools/fuzz.sh    longer runs (default 30 s a target)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

build=${1:-build-fuzz}
seconds=${FUZZ_SECONDS:-30}
jobs=$(nproc)

if ! command -v clang++ >/dev/null; then
  echo "fuzz.sh: clang++ is missing (apt-get install clang libclang-rt-14-dev)" >&2
  exit 2
fi

CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQUENBY_MODEL_ONLY=ON -DQUENBY_FUZZ=ON -DQUENBY_BENCHMARKS=OFF >/dev/null
build=$(cd "$build" && pwd)

# The targets and the makers of starting inputs, as tests/fuzz/corpus.txt lists them.
targets=()
while read -r name arrow maker _; do
  case "$name" in fuzz_*) targets+=("$name") ;; *) continue ;; esac
  [ "$arrow" = "<-" ] && targets+=("$maker")
done <tests/fuzz/corpus.txt
cmake --build "$build" -j "$jobs" --target "${targets[@]}"

corpora="$build/fuzz-corpus"
findings="$build/fuzz-findings"
rm -rf "$corpora" "$findings"
mkdir -p "$corpora" "$findings"

failed=()
printf '\n%-24s %12s %10s\n' target 'exec/s' inputs
while read -r name patterns; do
  case "$name" in fuzz_*) ;; *) continue ;; esac
  corpus="$corpora/$name"
  mkdir -p "$corpus"
  maker=""
  set -- $patterns
  if [ "${1:-}" = "<-" ]; then
    maker=$2
    shift 2
  fi
  files=()
  for pattern in "$@"; do
    # Globs from the root of the source tree.
    for input in "$root"/$pattern; do
      [ -f "$input" ] && files+=("$input")
    done
  done
  if [ -n "$maker" ]; then
    "$build/tests/fuzz/$maker" "$corpus" "${files[@]}" >/dev/null
  else
    cp "${files[@]}" "$corpus/"
  fi
  log="$findings/$name.log"
  status=0
  (cd "$findings" && "$build/tests/fuzz/$name" "$corpus" \
    -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
    -artifact_prefix="$findings/$name-" >"$log" 2>&1) || status=$?
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -n 1)
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  printf '%-24s %12s %10s\n' "$name" "${rate:-?}" "${runs:-?}"
  if [ "$status" -ne 0 ]; then
    failed+=("$name")
    echo "  $name found a problem (status $status); log: $log" >&2
    grep -E '^(==[0-9]+==ERROR|SUMMARY|.*runtime error|.*Test unit written)' "$log" | head -n 8 >&2 || true
  fi
done <tests/fuzz/corpus.txt

if [ "${#failed[@]}" -ne 0 ]; then
  echo "fuzz.sh: problems found by ${failed[*]}" >&2
  exit 1
fi
