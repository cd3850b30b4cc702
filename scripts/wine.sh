# shellcheck shell=bash
# Sourced by the commands: one Wine session in a prefix of the project's own, so that nothing of the
# user's is touched and nothing is left running.

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Environment for every program run here: quiet, no debugger that waits for a key after a crash, no
# offers to download browser or .NET engines.
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="winedbg.exe=d;mscoree=;mshtml=;winemenubuilder.exe=d"
export WINEARCH=win64
# The locale decides the ANSI code page, here 1252 or that of VTRUTILS_LOCALE, such as ja_JP, and
# which names files can have: without UTF-8 only those of ASCII letters. A locale that is not
# installed has no UTF-8, so the one that is there gets its name.
if [ -n "${VTRUTILS_LOCALE:-}" ]; then
    export LOCPATH="$project_root/build/wine/locales"
    mkdir -p "$LOCPATH"
    ln -sfn /usr/lib/locale/C.utf8 "$LOCPATH/$VTRUTILS_LOCALE.utf8"
fi
export LC_ALL=${VTRUTILS_LOCALE:-C}.UTF-8

# Debian's `wine` wrapper prints a hint about 32-bit programs before each run; the loader does not.
wine_loader=/usr/lib/wine/wine64
[ -x "$wine_loader" ] || wine_loader=wine
wine_server=/usr/lib/wine/wineserver64
[ -x "$wine_server" ] || wine_server=wineserver

# wine_prefix NAME: selects build/wine/NAME and makes it when it is not there. Creating one takes
# about 20 s and 700 MB, so it is made once; copies share its files but for the registry.
wine_prefix() {
    local template="$project_root/build/wine/template"
    export WINEPREFIX="$project_root/build/wine/$1" VTRUTILS_WINE=1
    [ -d "$WINEPREFIX" ] && return 0
    mkdir -p "$project_root/build/wine"
    (
        flock 9
        if [ ! -d "$template" ]; then
            echo "wine: creating a prefix in build/wine"
            rm -rf "$template.new"
            WINEPREFIX="$template.new" DISPLAY='' "$wine_loader" wineboot --init >/dev/null 2>&1
            WINEPREFIX="$template.new" "$wine_server" -w
            mv "$template.new" "$template"
        fi
        if [ ! -d "$WINEPREFIX" ]; then
            rm -rf "$WINEPREFIX.new"
            cp -al "$template" "$WINEPREFIX.new"
            cp -a --remove-destination "$template"/*.reg "$WINEPREFIX.new"
            mv "$WINEPREFIX.new" "$WINEPREFIX"
        fi
    ) 9>"$project_root/build/wine/.lock"
}

# wine_unmanaged: Wine waits about 2 s for a window manager each time a framed window hides; where
# none runs, windows are told not to wait.
wine_unmanaged() {
    "$wine_loader" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
}

# wine_fonts: Wine draws the buttons of title bars with a font of its own, which Debian's build fails
# to find. Its font for menus is not there either, and what stands for it has no Japanese letters:
# those come from another font, as on Windows.
wine_fonts() {
    local links='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink'
    local font
    ln -sf /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    for font in 'Liberation Sans' 'DejaVu Sans'; do
        "$wine_loader" reg add "$links" /v "$font" /t REG_MULTI_SZ \
            /d 'VL-PGothic-Regular.ttf,VL PGothic' /f >/dev/null 2>&1
    done
}

# wine_display: starts an X server of our own on a free number and sets DISPLAY.
wine_display() {
    local number
    exec 8< <(exec Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null 7>&-)
    xvfb_pid=$!
    read -r -t 30 number <&8 || { echo "wine: Xvfb did not start" >&2; return 1; }
    export DISPLAY=":$number"
}

# wine_start: one server for the whole run; programs then start in about 0.1 s. Waits for another run
# in the same prefix to end, and registers the clean-up that runs however the script ends.
wine_start() {
    exec 7>"$WINEPREFIX/.lock"
    flock -n 7 || { echo "wine: waiting for another run in $(basename "$WINEPREFIX")"; flock 7; }
    trap wine_stop EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    # A server that a killed run has left.
    "$wine_server" -k 7>&- >/dev/null 2>&1 || true
    "$wine_server" -w 7>&- >/dev/null 2>&1 || true
    "$wine_server" -p 7>&-
}

# services_start: starts the recorded online services, which end with this script, however it ends.
# VTRUTILS_SERVICES tells programs where they listen.
services_start() {
    [ -z "${VTRUTILS_SERVICES:-}" ] || return 0
    coproc services { exec "$project_root/scripts/recorded-services" --until-closed; }
    read -r -t 60 VTRUTILS_SERVICES <&"${services[0]}" ||
        { echo "wine: the recorded services did not start" >&2; return 1; }
    export VTRUTILS_SERVICES
}

wine_stop() {
    local status=$?
    trap - EXIT
    "$wine_server" -k >/dev/null 2>&1 || true
    "$wine_server" -w >/dev/null 2>&1 || true
    if [ -n "${xvfb_pid:-}" ]; then
        kill "$xvfb_pid" 2>/dev/null || true
        wait "$xvfb_pid" 2>/dev/null || true
    fi
    exit "$status"
}

# windows_path FILE: an absolute path as a Windows program names it.
windows_path() {
    local path
    path=$(realpath -m -- "$1")
    printf 'Z:%s' "${path//\//\\}"
}
