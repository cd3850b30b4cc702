#!/usr/bin/env bash
# Makes the reference pages from the public headers, the guides and the examples, in build/docs/html.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh

cmake --preset release >/dev/null
headers=build/docs/headers
rm -rf build/docs
mkdir -p build/docs
sed "s|^$PWD/||" build/release/public-headers >$headers

# Each subsystem has a page, which names its headers and shows an example.
failures=0
while read -r header; do
    name=${header##*/}
    case $name in Export.h | Fields.h | vtrutils.h | vtrfutls.h) continue ;; esac
    grep -qF "$header" docs/reference/*.md ||
        { echo "docs: no page in docs/reference/ names $header" >&2; failures=1; }
done <"$headers"
for page in docs/reference/*.md; do
    grep -q '\\include ' "$page" || { echo "docs: $page shows no example" >&2; failures=1; }
done
[ "$failures" -eq 0 ] || exit 1

{
    cat docs/Doxyfile
    echo "INPUT += $(tr '\n' ' ' <"$headers")"
    echo "PROJECT_NUMBER = $(cat build/release/version)"
    echo "OUTPUT_DIRECTORY = build/docs"
} | doxygen - 2>build/docs/warnings
[ ! -s build/docs/warnings ] || {
    sed "s|^$PWD/||" build/docs/warnings >&2
    echo "docs: $(grep -c warning: build/docs/warnings) warnings" >&2
    exit 1
}
mkdir -p build/docs/html/docs
cp -r docs/pictures build/docs/html/docs/
echo "docs: $(wc -l <"$headers") headers and $(ls docs/reference/*.md | wc -l) subsystems in build/docs/html/index.html"
