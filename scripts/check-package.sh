#!/usr/bin/env bash
# Hosts that find the installed package build and run. One is the sample that the README shows, the
# other uses what the library exports of jsoncpp.
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
# says PROGRAM ANSWER: it runs and prints that.
says() {
    local answer
    answer=$(cd build/consumer && timeout 60 ../../scripts/under-wine "$1.exe" 2>/dev/null | tr -d '\r')
    [ "$answer" = "$2" ] || { echo "check-package: $1 printed '$answer'" >&2; exit 1; }
}
says consumer "On tour, 2 sections"
says json '{"results":[{"id":7},{"id":-7.5},"Gr\u00fc\u00dfe"]}
-7.5 0 1 Value is not convertible to Int.'
echo "check-package: the sample and a host of jsoncpp build and run"
