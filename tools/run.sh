#!/usr/bin/env bash
# Builds Quenby and starts it. Without a display, it starts the program under a
# virtual X server, saves a screenshot of the screen a few seconds after start
# and keeps the program running until Ctrl+C.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUENBY_BENCHMARKS=OFF >/dev/null
cmake --build build-release --target quenby quenby-instrument-sim quenby-kvx-dump quenby-zbl-dump \
  kvx_report_converter zbl_report_converter

program=build-release/bin/quenby
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  exec "$program"
fi

echo "No display found: starting Quenby under a virtual X server (Xvfb)."
display=:$(( 90 + RANDOM % 100 ))
Xvfb "$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
sleep 1
export DISPLAY=$display
"$program" &
app=$!
trap 'kill $app $xvfb 2>/dev/null || true' EXIT INT TERM
sleep 4
shot="$PWD/build-release/quenby-screenshot.png"
if import -window root "$shot" 2>/dev/null; then
  echo "Screenshot of the screen: $shot"
else
  echo "Could not take a screenshot."
fi
echo "Quenby is running on the virtual display $display. Press Ctrl+C to stop it."
wait $app
