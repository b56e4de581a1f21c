#!/usr/bin/env bash
# Checks formatting with clang-format and the code with clang-tidy, given a configured build folder.
set -euo pipefail
build=$1
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
git ls-files 'src/*.cpp' 'data/*.cpp' 'tests/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet --warnings-as-errors='*'
