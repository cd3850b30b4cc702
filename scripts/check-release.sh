#!/usr/bin/env bash
# The archives that package.sh made are whole and name no folder of this machine; the symbols lead to the
# sources; the same sources elsewhere give the same DLL; and the gallery runs where it is unpacked, in a
# Wine prefix that has seen nothing else.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine.sh
fail() { echo "check-release: $*" >&2; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
(cd build/packages && sha256sum --check --quiet -- *.sha256) || fail "a checksum is wrong"
for archive in "$PWD"/build/packages/*.zip; do
    (cd "$folder" && cmake -E tar xf "$archive")
done
library=$(echo "$folder"/vtrutils-*-windows-x86_64)
gallery=$(echo "$folder"/vtrutils-gallery-*)

for file in bin/{vtrutils,vtrfutls}.dll{,.debug} bin/utility-strings.ini lib/lib{vtrutils,vtrfutls}.dll.a \
    lib/cmake/vtrutils/vtrutilsConfig.cmake include/utilities/vtrutils.h include/vtrfutls/vtrfutls.h \
    share/vtrutils/host-template/main.cpp share/doc/vtrutils/{file-formats.md,hosting.md,html/index.html}; do
    [ -s "$library/$file" ] || fail "the library's archive has no $file"
done
for licences in "$library/share/vtrutils/licences" "$gallery/licences"; do
    [ -s "$licences/gcc-runtime.txt" ] || fail "an archive lacks licences"
done
! grep -rlF -e "$PWD" "$library" "$gallery" || fail "files name folders of this machine"

symbols=$library/bin/vtrfutls.dll.debug
address=$(x86_64-w64-mingw32-nm -C "$symbols" | sed -n 's/ T LoggingNow()$//p')
place=$(x86_64-w64-mingw32-addr2line -i -e "$symbols" "0x$address" | tail -n 1)
[[ $place == */vtrfutls/Log.cpp:[1-9]* ]] || fail "the symbols place a function at '$place'"

# The smaller DLL stands for both, which are built by the same rules.
mkdir "$folder/elsewhere"
git ls-files -z --cached --others --exclude-standard | xargs -0 ls -d 2>/dev/null |
    xargs -d '\n' cp --parents -t "$folder/elsewhere"
mkdir "$folder/elsewhere/build"
[ ! -d build/sources ] || cp -r build/sources "$folder/elsewhere/build/"
(cd "$folder/elsewhere" && cmake --preset release -DVTRUTILS_TESTS=OFF -DVTRUTILS_GALLERY=OFF &&
    cmake --build --preset release --target vtrfutls) >"$folder/log" 2>&1 ||
    { tail -n 20 "$folder/log" >&2; fail "the sources do not build elsewhere"; }
cmp "$folder/elsewhere/build/release/bin/vtrfutls.dll" "$library/bin/vtrfutls.dll" ||
    fail "the same sources give another DLL elsewhere"

rm -rf build/wine/release
wine_prefix release
remove_and_stop() { local status=$?; set +e; rm -rf "$folder"; (exit "$status"); wine_stop; }
wine_start
trap remove_and_stop EXIT
wine_display
wine_unmanaged
mkdir "$folder/pictures"
(cd / && timeout 120 "$wine_loader" "$gallery/gallery.exe" --pictures "$(windows_path "$folder/pictures")" \
    >/dev/null 2>&1 </dev/null) || fail "the gallery ended with code $?"
pages=$(grep -o 'pictureName' gallery/pages/Pages.cpp | wc -l)
pictures=$(find "$folder/pictures" -name '*.png' -size +4k | wc -l)
[ "$pages" -gt 0 ] && [ "$pictures" -eq "$pages" ] || fail "the gallery made $pictures pictures of $pages pages"
echo "check-release: both archives are whole; the gallery made $pictures pictures"
