#!/usr/bin/env bash
# fetch-source.sh NAME FOLDER: unpacks the Debian source package NAME, at the version pinned in
# sources.list, into FOLDER. Does nothing when that version is there already.
# The machine's apt configuration usually has binary entries only and stays as it is: the source
# entries made from it live in a temporary folder.
set -euo pipefail
name=$1 folder=$2
version=$(awk -v name="$name" '$1 == name { print $2 }' "$(dirname "$0")/sources.list")
[ -n "$version" ] || { echo "fetch-source: $name is not in sources.list" >&2; exit 1; }
[ "$(cat "$folder/.fetched" 2>/dev/null)" != "$version" ] || exit 0

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/lists/partial" "$work/parts"
chmod -R a+rx "$work"
apt-get indextargets --format '$(ORIGIN)|$(COMPONENT)|$(REPO_URI)|$(RELEASE)' \
    'Created-By: Packages' | sort -u |
    while IFS='|' read -r origin component uri release; do
        [ "$origin $component" = "Debian main" ] || continue
        echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $uri $release main"
    done >"$work/sources.list"

apt=(apt-get -qq
    -o "Dir::Etc::SourceList=$work/sources.list" -o "Dir::Etc::SourceParts=$work/parts"
    -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=root)
"${apt[@]}" update
(cd "$work" && "${apt[@]}" source --download-only "$name=$version" >/dev/null)
rm -rf "$folder"
mkdir -p "$(dirname "$folder")"
dpkg-source --no-check -x "$work"/*.dsc "$folder" >/dev/null
echo "$version" >"$folder/.fetched"
