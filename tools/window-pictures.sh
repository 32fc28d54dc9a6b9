#!/usr/bin/env bash
# Draws every window of the program in English, French and Polish into
# docs/windows/, without a screen: the window test that checks that no text
# is cut also saves each window it has laid out, and the pages of the
# print-outs it prints to PDF (through pdftoppm). The build folder is
# build-release unless QUENBY_BUILD_DIR names another.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
build=${QUENBY_BUILD_DIR:-build-release}
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=OFF >/dev/null
fi
cmake --build "$build" --target test_text_fit

if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi
mkdir -p docs/windows
QUENBY_PICTURES_DIR=$PWD/docs/windows QT_QPA_PLATFORM=offscreen \
  "$build/tests/shell/test_text_fit" -silent
ls docs/windows
