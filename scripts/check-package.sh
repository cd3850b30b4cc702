#!/usr/bin/env bash
# A host that finds the installed package builds and runs, and is the sample that the README shows.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine.sh

sed -n '/^```cpp$/,/^```$/p' README.md | sed '/^```/d' | diff -u --label README.md \
    --label tests/consumer/main.cpp - tests/consumer/main.cpp ||
    { echo "check-package: the README shows another sample" >&2; exit 1; }

rm -rf build/release/package build/consumer
cmake --install build/release >/dev/null
cmake -S tests/consumer -B build/consumer -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
    -Dvtrutils_DIR="$PWD/build/release/package/lib/cmake/vtrutils" >/dev/null
cmake --build build/consumer

wine_prefix test
wine_start
answer=$(cd build/consumer && timeout 60 ../../scripts/under-wine consumer.exe 2>/dev/null | tr -d '\r')
[ "$answer" = "On tour, 2 sections" ] ||
    { echo "check-package: the sample printed '$answer'" >&2; exit 1; }
echo "check-package: the sample builds and runs"
