#!/usr/bin/env bash
# Builds Quenby and runs every check:
#  1. the normal build and every test, also under a French and a Polish locale;
#  2. the formatting of the sources;
#  3. the model-only configuration (clang), which also checks that no model
#     code needs a screen, with its tests, then each fuzz target for 30 s;
#  4. the build and the tests again under AddressSanitizer and
#     UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
jobs=$(nproc)

echo "== Build and tests"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build -j "$jobs"
(cd build && ctest -j "$jobs" --output-on-failure)

echo "== Formatting"
bash tools/check-format.sh

echo "== Model-only configuration and fuzzing"
CC=clang CXX=clang++ cmake -S . -B build-model-only -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQUENBY_MODEL_ONLY=ON -DQUENBY_FUZZ=ON -DQUENBY_BENCHMARKS=OFF >/dev/null
cmake --build build-model-only -j "$jobs"
(cd build-model-only && ctest -j "$jobs" -LE locale --output-on-failure)
bash tools/fuzz.sh build-model-only

echo "== Sanitizers"
san="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DQUENBY_BENCHMARKS=OFF \
  -DCMAKE_CXX_FLAGS="$san" -DCMAKE_EXE_LINKER_FLAGS="$san" >/dev/null
cmake --build build-sanitize -j "$jobs"
# The locale runs repeat whole binaries; the normal build ran them.
(cd build-sanitize && ctest -j "$jobs" -LE locale --output-on-failure)
