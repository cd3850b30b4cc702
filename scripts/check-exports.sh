#!/usr/bin/env bash
# The names that each DLL exports are those listed in the tree; --update writes the lists.
set -euo pipefail
cd "$(dirname "$0")/.."

exported() {
    x86_64-w64-mingw32-objdump -p "build/release/bin/$1.dll" |
        sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[ *[0-9]*\] //p' |
        x86_64-w64-mingw32-c++filt | LC_ALL=C sort
}

for library in vtrutils vtrfutls; do
    list=scripts/exports/$library.txt
    if [ "${1:-}" = --update ]; then
        exported $library >"$list"
    else
        diff -u --label "$list" --label $library.dll "$list" <(exported $library) || {
            echo "check-exports: $library.dll exports other names; scripts/check-exports.sh --update" >&2
            exit 1
        }
    fi
    echo "check-exports: $(wc -l <"$list") names in $library.dll"
done
