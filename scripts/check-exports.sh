#!/usr/bin/env bash
# The names that each DLL exports are those listed in the tree, and all functions among them that the
# installed headers mark as exported; --update writes the lists.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/cross-includes.sh
headers=$PWD/build/release/headers

exported() {
    x86_64-w64-mingw32-objdump -p "build/release/bin/$1.dll" |
        sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[ *[0-9]*\] //p' | LC_ALL=C sort
}

# While a library is built, nothing but its own interface is marked as exported.
declared() {
    (cd "$headers/include" && find . -name '*.h' -printf '#include "%P"\n') |
        clang++ "${cross_includes[@]}" -I"$headers/include" -D"${1^^}_BUILD" -std=c++17 \
            -fsyntax-only -Xclang -ast-dump=json -x c++ - |
        scripts/declared-names.py | LC_ALL=C sort -u
}

rm -rf "$headers"
cmake --install build/release --prefix "$headers" >/dev/null
for library in vtrutils vtrfutls; do
    list=scripts/exports/$library.txt
    if [ "${1:-}" = --update ]; then
        exported $library | x86_64-w64-mingw32-c++filt | LC_ALL=C sort >"$list"
    else
        exported $library | x86_64-w64-mingw32-c++filt | LC_ALL=C sort |
            diff -u --label "$list" --label $library.dll "$list" - || {
            echo "check-exports: $library.dll exports other names; scripts/check-exports.sh --update" >&2
            exit 1
        }
    fi
    declared=$(declared $library)
    missing=$(LC_ALL=C comm -23 <(echo "$declared") <(exported $library) | x86_64-w64-mingw32-c++filt)
    [ -n "$declared" ] && [ -z "$missing" ] || {
        printf 'check-exports: %s.dll does not export what its headers declare:\n%s\n' $library "$missing" >&2
        exit 1
    }
    echo "check-exports: $(wc -l <"$list") names in $library.dll, $(wc -l <<<"$declared") of them declared"
done
