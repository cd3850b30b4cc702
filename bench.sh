#!/usr/bin/env bash
# Sets up, builds and runs the benchmarks under Wine and prints one table.
#   ./bench.sh               everything
#   ./bench.sh 'INI look-up' the works whose name matches this regular expression; options of
#                            Google Benchmark are passed on
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh
source scripts/wine.sh

cmake --preset bench >/dev/null
cmake --build --preset bench

arguments=()
for argument; do
    [ "${argument#--}" != "$argument" ] || argument="--benchmark_filter=$argument"
    arguments+=("$argument")
done

wine_prefix bench
wine_start
wine_display
wine_unmanaged
services_start
lines=build/bench/lines
: >"$lines"
load_before=$(cut -d' ' -f1 /proc/loadavg)
for program in build/bench/bin/*_bench.exe; do
    scripts/under-wine "$program" ${arguments[@]+"${arguments[@]}"} >>"$lines"
done
[ -s "$lines" ] || { echo "bench: nothing matches" >&2; exit 1; }

# Other work on the machine lengthens long measurements more than short ones: a table is worth
# keeping when the load is near 0 before and near 1 after.
echo
printf '%s; %s, %s cores, load %s before and %s after; %s, g++ %s\n\n' "$(date +%F)" \
    "$(sed -n 's/^model name[^:]*: *//p' /proc/cpuinfo | head -n 1)" "$(nproc)" "$load_before" \
    "$(cut -d' ' -f1 /proc/loadavg)" "$("$wine_loader" --version)" \
    "$(x86_64-w64-mingw32-g++-posix -dumpfullversion)"
awk -f bench/table.awk "$lines"
