#!/usr/bin/env bash
# Sets up, builds and runs the gallery under Wine.
#   ./run.sh                    shows it; without DISPLAY makes a picture of every page in
#                               build/pictures
#   ./run.sh FILE               the same with this INI or XML document or table
#   ./run.sh --language NAME    the same in a language of gallery/data/languages
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/scripts
source "$scripts/wine.sh"
fail() { echo "run: $*" >&2; exit 1; }

document=()
language=()
while [ $# -gt 0 ]; do
    if [ "$1" = --language ]; then
        [ $# -gt 1 ] || fail "--language needs a name"
        language=(--language "$2")
        shift 2
    else
        [ ${#document[@]} -eq 0 ] || fail "one document at most: ./run.sh [FILE] [--language NAME]"
        [ -f "$1" ] || fail "there is no file $1"
        document=("$(windows_path "$1")")
        shift
    fi
done
arguments=("${document[@]}" "${language[@]}")
cd "$project_root"
scripts/setup.sh

preset=${PRESET:-release}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target gallery
gallery=build/$preset/bin/gallery.exe

# Wine draws the buttons of title bars with a font of its own, which Debian's build fails to find.
add_symbols() { ln -sf /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"; }

# A window on a display that is gone would wait unseen, forever.
if [[ ${DISPLAY:-} =~ ^:([0-9]+) ]]; then
    socket=/tmp/.X11-unix/X${BASH_REMATCH[1]}
    [ -S "$socket" ] || grep -q "$socket\$" /proc/net/unix || fail "no X server on DISPLAY=$DISPLAY"
fi

if [ -n "${DISPLAY:-}" ]; then
    # Windows that are open already live on: the server ends by itself after the last of them.
    wine_prefix gallery
    add_symbols
    "$wine_loader" "$gallery" "${arguments[@]}" || fail "the gallery ended with code $?"
    "$wine_server" -w
    exit 0
fi

wine_prefix pictures
add_symbols
wine_start
wine_display
wine_unmanaged
# A desktop of Wine's own gives the window a title bar where no window manager runs.
explorer='HKCU\Software\Wine\Explorer'
"$wine_loader" reg add "$explorer\\Desktops" /v Gallery /d 1280x800 /f >/dev/null
"$wine_loader" reg add "$explorer" /v Desktop /d Gallery /f >/dev/null
pictures=build/pictures
rm -rf "$pictures"
mkdir -p "$pictures"
timeout 120 "$wine_loader" "$gallery" "${arguments[@]}" --pictures "$(windows_path "$pictures")" \
    >/dev/null || fail "the gallery made no pictures; it ended with code $?"
ls "$pictures"/*.png
