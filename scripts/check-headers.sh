#!/usr/bin/env bash
# Every public header compiles alone as C++17, with both compilers. The installed package tells which
# headers are public.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/cross-includes.sh
installed=build/release/alone
rm -rf "$installed"
cmake --install build/release --prefix "$installed" >/dev/null
include=$installed/include
flags=(-std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I"$include" -x c++ -)

compile() {
    echo "#include \"$1\"" | "${@:2}" || { echo "check-headers: $1 fails alone ($2)" >&2; exit 1; }
}
export -f compile
mapfile -t headers < <(cd "$include" && find . -name '*.h' | sed 's|^\./||' | sort)
[ ${#headers[@]} -gt 0 ] || { echo "check-headers: no headers in $include" >&2; exit 1; }
for compiler in x86_64-w64-mingw32-g++-posix "clang++ ${cross_includes[*]}"; do
    # shellcheck disable=SC2086 # the compiler may be several words
    printf '%s\0' "${headers[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'compile "$@"' _ {} $compiler "${flags[@]}"
done
echo "check-headers: ${#headers[@]} headers"
