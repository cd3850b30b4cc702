#!/usr/bin/env bash
# The archive of the library is made, and the README's steps for a host, followed in an empty folder, lead
# to a program that prints what the README says. That program is the sample that the README shows.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine.sh
fail() { echo "check-package: $*" >&2; exit 1; }

# Prints the fenced blocks of that language in the README's chapter for hosts.
blocks() {
    sed -n '/^## How a host uses it$/,/^## [^H]/p' README.md | sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" | sed '/^```/d'
}
blocks cpp | diff -u --label README.md --label host-template/main.cpp - host-template/main.cpp ||
    fail "the README shows another sample"
steps=$(blocks sh)
printed=$(blocks text)
[ -n "$steps" ] && [ -n "$printed" ] || fail "the README has no steps or does not say what they print"

./package.sh

folder=$(mktemp -d)
remove_and_stop() { local status=$?; set +e; rm -rf "$folder"; (exit "$status"); wine_stop; }
wine_prefix test
wine_start
trap remove_and_stop EXIT
cp build/packages/vtrutils-*-windows-x86_64.zip "$folder"
(cd "$folder" && timeout 300 bash -euo pipefail -c "$steps" >output 2>errors </dev/null) ||
    { tail -n 20 "$folder/output" "$folder/errors" >&2; fail "a step of the README fails"; }
answer=$(tail -n 1 "$folder/output" | tr -d '\r')
[ "$answer" = "$printed" ] || fail "the sample printed '$answer'"

# Another host, of what the library exports of jsoncpp.
(cmake -S tests/consumer -B "$folder/json" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    --toolchain "$folder/host/mingw-w64-x86_64.cmake" -DCMAKE_PREFIX_PATH="$(echo "$folder"/vtrutils-*-x86_64)" &&
    cmake --build "$folder/json") >"$folder/output" 2>&1 ||
    { tail -n 20 "$folder/output" >&2; fail "the host of jsoncpp does not build"; }
timeout 60 "$wine_loader" "$folder/json/json.exe" >"$folder/output" 2>/dev/null </dev/null || true
answer=$(tr -d '\r' <"$folder/output")
[ "$answer" = '{"results":[{"id":7},{"id":-7.5},"Gr\u00fc\u00dfe"]}
-7.5 0 1 Value is not convertible to Int.' ] || fail "the host of jsoncpp printed '$answer'"
echo "check-package: the README's steps and a host of jsoncpp lead to programs that run"
