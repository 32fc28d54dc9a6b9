#!/usr/bin/env bash
# Checks that every C++ source of the project is formatted as .clang-format
# says; with --fix, formats them in place.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [ "${1:-}" = "--fix" ]; then
  clang-format -i "${files[@]}"
  exit 0
fi
clang-format --dry-run -Werror "${files[@]}"
echo "Formatting: ${#files[@]} files as .clang-format says."
