#!/bin/sh
# Compares the binary interface of the built library with the one that programs were linked to: types of
# the header, functions, their parameters and results. New functions are no change.
# usage: abi.sh [--write] SOURCE-FOLDER LIBRARY        --write makes the baseline anew
set -eu
write=
[ "$1" != --write ] || { write=yes; shift; }
source=$1
library=$2
baseline=$source/cmake/abi/loopwise-1.abi
command -v abidiff >/dev/null || { echo "Skipped: abidiff is missing (Debian: abigail-tools)" >&2; exit 77; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names \
    --exported-interfaces-only --out-file "$folder/now.abi" "$library"
for type in PointR3 ChainAtom Edge EdgeAnnotation; do # a library without debug information has none
    grep -q "class-decl name='$type'" "$folder/now.abi" || { echo "The library tells nothing of $type" >&2; exit 1; }
done
if [ -n "$write" ]; then
    cp "$folder/now.abi" "$baseline"
    echo "Written: $baseline"
    exit
fi
abidiff --no-added-syms "$baseline" "$folder/now.abi" || {
    echo "The binary interface changed (abidiff: $?). See docs/packaging.md." >&2
    exit 1
}
