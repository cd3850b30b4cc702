#!/usr/bin/env bash
# Makes the archives of a release in build/packages, each with its checksum: the library for those who
# write hosts, and the gallery for those who look. The same sources give the same bytes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh

cmake --preset release >/dev/null
cmake --build --preset release --target vtrutils vtrfutls gallery
./docs.sh

version=$(cat build/release/version)
library=vtrutils-$version-windows-x86_64
gallery=vtrutils-gallery-$version
packages=build/packages
rm -rf "$packages"
mkdir -p "$packages"
cmake --install build/release --prefix "$packages/$library" >/dev/null
cp -r build/docs/html "$packages/$library/share/doc/vtrutils/"
cmake --install build/release --prefix "$packages/$gallery" --component gallery >/dev/null
cp -r "$packages/$library/share/vtrutils/licences" "$packages/$gallery/"

cd "$packages"
for name in "$library" "$gallery"; do
    ../../scripts/zip-folder.py "$name"
    sha256sum "$name.zip" >"$name.zip.sha256"
    rm -r "$name"
done
du -h --apparent-size -- *.zip
