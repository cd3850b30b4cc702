#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need; does nothing, and asks the
# registry nothing, when they are all there.
set -euo pipefail

packages=(
    # building
    cmake ninja-build g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 googletest
    g++-mingw-w64-i686-posix
    # fetching and unpacking Debian source packages that are built here
    dpkg-dev xz-utils ca-certificates
    # running: Wine, an X server for machines without one, fonts for what is painted, Japanese included
    wine wine64 fonts-wine fonts-liberation fonts-vlgothic xvfb
    # testing: English words that no list of offensive words may take offence at; certificates for
    # the recorded online services
    wamerican openssl
    # checking
    clang clang-format clang-tidy python3
    # the reference pages
    doxygen
    # measuring: a peer of the INI reader
    libsimpleini-dev
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "setup: run as root, or install sudo, to add: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
