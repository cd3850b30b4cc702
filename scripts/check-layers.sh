#!/usr/bin/env bash
# Folders include what stands below them and nothing else: each #include is one that the table allows.
set -euo pipefail
cd "$(dirname "$0")/.."

# What several rows share. PUBLIC, in the row of utilities and below, is the list of headers for hosts in
# utilities/CMakeLists.txt, without those of utilities/base.
blocks='utilities/Export.h utilities/Fields.h common vtrfutls utilities/base'
ground="$blocks utilities/text/strings utilities/system/locks utilities/system/files"
hosts='common vtrfutls PUBLIC'

# A folder, or a single file, and what its files may include beside their own folder. Lowest first: a row
# names only rows above it, so that there is no circle. The first row that fits a folder counts; a
# folder's * stands for one name or more. ANY, in the last row, is everything.
table="
utilities/Export.h
utilities/Fields.h
common
vtrfutls                  common
utilities/base            utilities/Export.h utilities/Fields.h common vtrfutls
utilities/text/strings    $blocks
utilities/system/locks    $blocks
utilities/system/files    $blocks utilities/text/strings utilities/system/locks
utilities/containers      $ground
utilities/system/objects  $ground utilities/containers
utilities/system/info     $ground utilities/containers
utilities/text/html       $ground
utilities/text/ini        $ground
utilities/text/tables     $ground
utilities/text/language   $ground utilities/containers utilities/text/tables
utilities/xml             $ground utilities/text/html
utilities/undo            $ground
utilities/promo           $ground utilities/text/ini utilities/text/language
utilities/online          $ground utilities/containers utilities/text/html utilities/xml
utilities/ui              $ground utilities/system/info utilities/text/html utilities/text/language
utilities                 $hosts utilities/base utilities/text/language
gallery/text              $hosts
gallery/widgets           $hosts gallery/text
gallery/app               $hosts gallery/text gallery/widgets
gallery/pages/*           $hosts gallery/text gallery/widgets gallery/app
gallery/pages             gallery/app gallery/pages/*
gallery                   $hosts gallery/text gallery/widgets gallery/app gallery/pages
tests/support             $hosts
bench/support             $hosts
bench/peers               $hosts bench/support
bench                     $hosts bench/support bench/peers utilities/promo tests/support
docs/examples             PUBLIC vtrfutls tests/support
host-template             PUBLIC vtrfutls
tests/*                   ANY
"

# Made by the build.
generated=OffensiveWords.inc

public=$(sed -n '/^set(VTRUTILS_PUBLIC_HEADERS$/,/)/p' utilities/CMakeLists.txt |
    sed -n '/^ *base/d; s|^ *\([A-Za-z][A-Za-z0-9/]*\.h\))*$|utilities/\1|p')
mapfile -t files < <(git ls-files --cached --others --exclude-standard |
    while read -r file; do [ ! -f "$file" ] || echo "$file"; done)
mapfile -t sources < <(printf '%s\n' "${files[@]}" | grep -E '\.(h|cpp|rc)$')
[ ${#sources[@]} -gt 0 ] || { echo "check-layers: no sources" >&2; exit 1; }

table=$(echo "$table" | grep .) public=$public generated=$generated all=$(printf '%s\n' "${files[@]}") awk '
function fail(text) { print "check-layers: " text > "/dev/stderr"; failures++ }
function fits(name, pattern) {
    if (pattern !~ /\/\*$/)
        return name == pattern
    sub(/\*$/, "", pattern)
    return index(name, pattern) == 1
}
# The folder of a file, or the file itself when it has a row.
function unit_of(path) {
    if (!(path in row_named))
        sub("/[^/]*$", "", path)
    return path
}
function row_of(unit,    i) {
    for (i = 1; i <= rows && !fits(unit, name[i]); i++)
        ;
    return i
}
function allowed(row, path,    i) {
    for (i = 1; i <= names[row]; i++) {
        if (may[row, i] == "ANY" || fits(unit_of(path), may[row, i]) ||
            (may[row, i] == "PUBLIC" && path in is_public))
            return 1
    }
    return 0
}
function read_list(text, list,    i, n, lines) {
    n = split(text, lines, "\n")
    for (i = 1; i <= n; i++)
        list[lines[i]]
    return n
}
function is_above(word, row) {
    if (word == "PUBLIC")
        word = "utilities"
    return word in row_named || (row == "utilities" && word == row)
}
function read_table(    i, j, lines, last, fields, fieldCount) {
    last = split(ENVIRON["table"], lines, "\n")
    for (i = 1; i <= last; i++) {
        fieldCount = split(lines[i], fields, " ")
        name[++rows] = fields[1]
        names[rows] = fieldCount - 1
        for (j = 2; j <= fieldCount; j++) {
            may[rows, j - 1] = fields[j]
            if (!is_above(fields[j], fields[1]) && !(fields[j] == "ANY" && i == last))
                fail("the row " fields[1] " names " fields[j] ", which has no row above it")
        }
        row_named[fields[1]]
    }
}
function look(path, quoted,    unit) {
    if (!(path in exists) && quoted && (here "/" path) in exists)
        path = here "/" path
    if (path in exists) {
        includes++
        unit = unit_of(path)
        if (unit != here && !allowed(row, path))
            fail(FILENAME ":" FNR ": " here " may not include " unit " (" path ")")
    } else if (quoted && !(path in is_generated)) {
        fail(FILENAME ":" FNR ": there is no file " path)
    }
}
BEGIN {
    read_table()
    read_list(ENVIRON["all"], exists)
    read_list(ENVIRON["generated"], is_generated)
    if (read_list(ENVIRON["public"], is_public) == 0)
        fail("utilities/CMakeLists.txt has no list of public headers")
}
FNR == 1 {
    here = unit_of(FILENAME)
    row = row_of(here)
    used[row]
    if (row > rows && !(here in told)) {
        told[here]
        fail("the folder " here " is not in the table (" FILENAME ")")
    }
}
row <= rows && sub(/^[ \t]*#[ \t]*include/, "") {
    if (match($0, /^[ \t]*["<][^">]+/)) {
        $0 = substr($0, 1, RLENGTH)
        match($0, /["<]/)
        look(substr($0, RSTART + 1), substr($0, RSTART, 1) == "\"")
    } else {
        fail(FILENAME ":" FNR ": names no file")
    }
}
END {
    for (i = 1; i <= rows; i++) {
        if (!(i in used))
            fail("the row " name[i] " fits no file")
    }
    if (includes == 0)
        fail("found no #include of a file of the tree")
    if (failures > 0)
        exit 1
    print "check-layers: " includes " includes of files of the tree in " ARGC - 1 " files"
}' "${sources[@]}"
