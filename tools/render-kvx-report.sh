#!/usr/bin/env bash
# Builds the report renderer and draws the condensed report of the ten-tap
# sample into docs/kvx-report.png, without a screen. Arguments go to the
# renderer ahead of the file names, e.g. --standard "IEEE 45". The build
# folder is build-release unless QUENBY_BUILD_DIR names another.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
build=${QUENBY_BUILD_DIR:-build-release}
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=OFF >/dev/null
fi
cmake --build "$build" --target quenby-render-kvx-report

if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi
mkdir -p docs
QT_QPA_PLATFORM=offscreen "$build/bin/quenby-render-kvx-report" "$@" \
  samples/kvx-ten-taps.txt docs/kvx-report.png
