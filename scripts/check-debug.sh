#!/usr/bin/env bash
# A debug build asserts what declarations require of their callers: the quick tests break none of it.
# Arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine.sh

cmake --preset debug >/dev/null
cmake --build --preset debug --target quick_tests

wine_prefix test
wine_start
wine_display
wine_unmanaged
ctest --preset debug --label-regex '^quick$' "$@"
