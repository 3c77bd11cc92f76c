#!/bin/sh
# Compares the functions that the header declares with those that the library exports and, if asked to, the types of
# the header, functions, their parameters and results with those that programs were linked to (new functions are no
# change there).
# usage: interface.sh SOURCE-FOLDER LIBRARY [compare|write]        write makes the baseline of the comparison anew
set -eu
baseline=$1/cmake/abi/loopwise-1.abi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
grep '^LOOPWISE_API' "$1/include/libloopwise.h" | sed -E 's/\(.*//; s/.*[ *&>]//' | sort >"$folder/declared"
nm -D --defined-only -C "$2" | awk '$2 != "A"' | sed -E 's/^[0-9a-f]+ . //; s/[[(].*//' | sort >"$folder/exported"
[ -s "$folder/declared" ]
diff "$folder/declared" "$folder/exported"
[ $# = 3 ] || exit 0

command -v abidiff >/dev/null || { echo "Skipped: abidiff is missing (Debian: abigail-tools)" >&2; exit 77; }
abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names \
    --exported-interfaces-only --out-file "$folder/now.abi" "$2"
for type in PointR3 ChainAtom Edge EdgeAnnotation; do # a library without debug information has none
    grep -q "class-decl name='$type'" "$folder/now.abi" || { echo "The library tells nothing of $type" >&2; exit 1; }
done
[ "$3" = compare ] || cp "$folder/now.abi" "$baseline"
abidiff --no-added-syms "$baseline" "$folder/now.abi" || {
    echo "The binary interface changed (abidiff: $?). See docs/packaging.md." >&2
    exit 1
}
