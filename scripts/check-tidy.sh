#!/usr/bin/env bash
# clang-tidy over the libraries, or over the files named as arguments. Clang compiles each of them for
# that, and its warnings count.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/cross-includes.sh

files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files "common/*.cpp" "utilities/*.cpp" "vtrfutls/*.cpp")
flags=("${cross_includes[@]}" -isystem build/sources/libjsoncpp/include -std=c++20 -I. -Ibuild/release/utilities -DVTRUTILS_BUILD -DVTRFUTLS_BUILD
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wformat=2
    -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wunreachable-code -Wcomma -Wimplicit-fallthrough)
# xargs puts the file behind the flags. The counts of warnings are those of system headers.
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c '
    flags=("${@:1:$#-1}") file=${*: -1}
    clang-tidy --quiet "$file" -- "${flags[@]}" 2> >(grep -v "warnings\? generated" >&2)' _ "${flags[@]}"
echo "check-tidy: ${#files[@]} files"
