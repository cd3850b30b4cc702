#!/usr/bin/env bash
# Sets up, builds and runs the gallery under Wine.
#   ./run.sh [FILE] [--language NAME] [--help]
# shows it, with this INI or XML document or table, in a language of gallery/data/languages. Where no
# window can be shown, it says why and makes a picture of every page in build/pictures instead.
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/scripts
source "$scripts/wine.sh"
fail() { echo "run: $*" >&2; exit 1; }

# What is no option is the file, which becomes a path that Windows programs know; the gallery itself
# tells what is wrong with the rest.
arguments=()
files=0
while [ $# -gt 0 ]; do
    case $1 in
    --help)
        sed -n '2,/^[^#]/s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"
        exit 0
        ;;
    --language | --registry)
        [ $# -gt 1 ] || fail "$1 needs a value"
        arguments+=("$1" "$2")
        shift
        ;;
    --*) fail "there is no option $1; ./run.sh --help names them" ;;
    *)
        [ $((files += 1)) -eq 1 ] || fail "more than one file: $1"
        [ -f "$1" ] || fail "there is no file $1"
        arguments+=("$(windows_path "$1")")
        ;;
    esac
    shift
done

# why_no_window: prints why windows cannot be shown, nothing if they can. One that is opened on a
# display that is gone would wait unseen, for ever.
why_no_window() {
    local display=${DISPLAY:-} host socket
    [ -n "$display" ] || { echo "DISPLAY is not set"; return; }
    [[ $display =~ ^(.*):([0-9]+) ]] || { echo "DISPLAY=$display names no display"; return; }
    host=${BASH_REMATCH[1]}
    if [ -n "$host" ] && [ "$host" != unix ]; then
        timeout 5 bash -c ": </dev/tcp/$host/$((6000 + BASH_REMATCH[2]))" 2>/dev/null ||
            echo "no X server answers on DISPLAY=$display"
        return
    fi
    socket=/tmp/.X11-unix/X${BASH_REMATCH[2]}
    [ -S "$socket" ] || grep -q "$socket\$" /proc/net/unix ||
        echo "there is no X server on DISPLAY=$display"
}
no_window=$(why_no_window)
[ -z "$no_window" ] ||
    echo "run: no window can be shown: $no_window. Making pictures of all pages instead." >&2

cd "$project_root"
scripts/setup.sh

preset=${PRESET:-release}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target gallery
gallery=build/$preset/bin/gallery.exe

if [ -z "$no_window" ]; then
    # Windows that are open already live on: the server ends by itself after the last of them.
    wine_prefix gallery
    wine_fonts
    "$wine_loader" "$gallery" "${arguments[@]}" || fail "the gallery ended with code $?"
    "$wine_server" -w
    exit 0
fi

wine_prefix pictures
wine_start
wine_display
wine_unmanaged
wine_fonts
# The pages of the online services show what recorded replies say.
services_start
# A desktop of Wine's own gives the window a title bar where no window manager runs.
explorer='HKCU\Software\Wine\Explorer'
"$wine_loader" reg add "$explorer\\Desktops" /v Gallery /d 1280x800 /f >/dev/null
"$wine_loader" reg add "$explorer" /v Desktop /d Gallery /f >/dev/null
pictures=build/pictures
rm -rf "$pictures"
mkdir -p "$pictures"
timeout 120 "$wine_loader" "$gallery" "${arguments[@]}" --pictures "$(windows_path "$pictures")" \
    >/dev/null || { code=$?; [ $code -ne 124 ] || fail "no pictures within 120 s"; exit $code; }
ls "$pictures"/*.png
