# shellcheck shell=bash
# Sourced: `cross_includes` holds what clang needs to read code for the cross compiler's target, whose
# standard headers it does not find by itself. The folder of the cross compiler's own intrinsics is
# left out: clang has its own.
cross_includes=(--target=x86_64-w64-mingw32)
while read -r folder; do
    cross_includes+=(-isystem "$folder")
done < <(x86_64-w64-mingw32-g++-posix -v -x c++ -E /dev/null -o /dev/null 2>&1 |
    sed -n '/#include <...>/,/End of search list/p' | grep '^ ' | xargs realpath | grep -v '^/usr/lib/gcc/.*/include\(-fixed\)\?$')
