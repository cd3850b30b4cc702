#!/usr/bin/env bash
# Every path that a document names, and every relative link in it, leads to a file or folder of the tree.
# A path is a word with a slash in backticks, from the root of the tree; * stands for any name.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t documents < <(git ls-files --cached --others --exclude-standard -- '*.md')
[ ${#documents[@]} -gt 0 ] || { echo "check-docs: no documents" >&2; exit 1; }

# Prints the place, the folder that the path starts from, and the path. Fenced blocks are code.
paths() {
    awk '
    function found(folder, path) { print FILENAME ":" FNR "\t" folder "\t" path }
    FNR == 1 { fenced = 0 }
    /^ *```/ { fenced = !fenced; next }
    fenced { next }
    {
        # A code span that goes on in the next line would hide what it names.
        pieces = split($0, piece, "`")
        if (pieces > 0 && pieces % 2 == 0)
            found(".", "second backtick")
        for (i = 2; i < pieces; i += 2) {
            count = split(piece[i], word, " ")
            for (j = 1; j <= count; j++)
                if (index(word[j], "/"))
                    found(".", word[j])
        }
        folder = FILENAME
        if (!sub("/[^/]*$", "", folder))
            folder = "."
        for (rest = $0; match(rest, /\]\([^)#]+/); rest = substr(rest, RSTART + RLENGTH)) {
            link = substr(rest, RSTART + 2, RLENGTH - 2)
            if (link !~ /^[a-z]+:/)
                found(folder, link)
        }
    }' "${documents[@]}"
}

count=0
failures=0
while IFS=$'\t' read -r place folder path; do
    count=$((count + 1))
    # Made by the build.
    [[ ${path#./} != build/* ]] || continue
    compgen -G "$folder/$path" >/dev/null ||
        { echo "check-docs: $place: there is no $path" >&2; failures=$((failures + 1)); }
done < <(paths)
[ "$count" -gt 0 ] || { echo "check-docs: the documents name no path" >&2; exit 1; }
[ "$failures" -eq 0 ] || exit 1
echo "check-docs: $count paths and links in ${#documents[@]} documents"
