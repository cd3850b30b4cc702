#!/usr/bin/env bash
# Sets up, builds and runs the tests under Wine.
#   ./test.sh              all tests
#   ./test.sh -R ini       those whose name matches; every argument goes to ctest
#   PRESET=debug ./test.sh the debug build
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh
source scripts/wine.sh

preset=${PRESET:-release}
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"

wine_prefix test
wine_start
wine_display
wine_unmanaged
ctest --preset "$preset" "$@"
