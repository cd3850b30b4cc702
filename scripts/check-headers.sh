#!/usr/bin/env bash
# Every public header compiles alone as C++17, with both compilers. The installed package tells which
# headers are public.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/cross-includes.sh
include=build/release/package/include
flags=(-std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I"$include" -x c++ -)

count=0
while read -r header; do
    for compiler in x86_64-w64-mingw32-g++-posix "clang++ ${cross_includes[*]}"; do
        # shellcheck disable=SC2086 # the compiler may be several words
        echo "#include \"$header\"" | $compiler "${flags[@]}" ||
            { echo "check-headers: $header fails alone ($compiler)" >&2; exit 1; }
    done
    count=$((count + 1))
done < <(cd "$include" && find . -name '*.h' | sed 's|^\./||' | sort)
[ "$count" -gt 0 ] || { echo "check-headers: no headers in $include" >&2; exit 1; }
echo "check-headers: $count headers"
