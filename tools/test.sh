#!/usr/bin/env bash
# Builds Quenby and runs every test: once in a normal build, then again under
# AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
jobs=$(nproc)

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build -j "$jobs"
(cd build && ctest -j "$jobs" --output-on-failure)

san="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DQUENBY_BENCHMARKS=OFF \
  -DCMAKE_CXX_FLAGS="$san" -DCMAKE_EXE_LINKER_FLAGS="$san" >/dev/null
cmake --build build-sanitize -j "$jobs"
(cd build-sanitize && ctest -j "$jobs" --output-on-failure)
