#!/usr/bin/env bash
# Sets up, builds and runs the gallery under Wine.
#   ./run.sh         shows it; without DISPLAY makes a picture of every page in build/pictures
#   ./run.sh FILE    the same with this INI document
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/scripts
fail() { echo "run: $*" >&2; exit 1; }

arguments=()
if [ $# -gt 0 ]; then
    [ $# -eq 1 ] || fail "one document at most: ./run.sh [FILE]"
    [ -f "$1" ] || fail "there is no file $1"
fi
source "$scripts/wine.sh"
[ $# -eq 0 ] || arguments=("$(windows_path "$1")")
cd "$project_root"
scripts/setup.sh

preset=${PRESET:-release}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target gallery
gallery=build/$preset/bin/gallery.exe

# registry add|delete KEY [ARGUMENT...]: deleting what is not there is fine.
registry() { "$wine_loader" reg "$1" "HKCU\\Software\\Wine\\$2" "${@:3}" /f >/dev/null 2>&1 || [ "$1" = delete ]; }

wine_prefix gallery
# Wine draws the buttons of title bars with this font of its own, which Debian's build fails to find.
ln -sf /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
wine_start
if [ -n "${DISPLAY:-}" ]; then
    # The user's window manager frames the window.
    registry delete 'X11 Driver' /v Managed
    registry delete Explorer /v Desktop
    "$wine_loader" "$gallery" "${arguments[@]}" || fail "the gallery ended with code $?"
    exit 0
fi

# A desktop of Wine's own gives the window a title bar where no window manager runs.
wine_display
wine_unmanaged
registry add 'Explorer\Desktops' /v Gallery /d 1280x800
registry add Explorer /v Desktop /d Gallery
pictures=build/pictures
rm -rf "$pictures"
mkdir -p "$pictures"
timeout 120 "$wine_loader" "$gallery" "${arguments[@]}" --pictures "$(windows_path "$pictures")" \
    >/dev/null || fail "the gallery made no pictures; it ended with code $?"
ls "$pictures"/*.png
