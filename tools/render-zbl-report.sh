#!/usr/bin/env bash
# Builds the ZBL renderer and draws the basic report and the V graph of
# channel A of a sample into docs/zbl-report.png and docs/zbl-vgraph.png,
# without a screen. The build folder is build-release unless QUENBY_BUILD_DIR
# names another.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
build=${QUENBY_BUILD_DIR:-build-release}
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=OFF >/dev/null
fi
cmake --build "$build" --target quenby-render-zbl-report

if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi
mkdir -p docs
QT_QPA_PLATFORM=offscreen "$build/bin/quenby-render-zbl-report" "$@" \
  samples/zbl-manual-19-rows.zbl docs/zbl-report.png docs/zbl-vgraph.png
