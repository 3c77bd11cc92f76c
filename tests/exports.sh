#!/bin/sh
# Compares the functions that the header declares with those that the shared library exports.
# usage: exports.sh HEADER LIBRARY
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
grep '^LOOPWISE_API' "$1" | sed -E 's/\(.*//; s/.*[ *&>]//' | sort >"$folder/declared"
nm -D --defined-only -C "$2" | awk '$2 != "A"' | sed -E 's/^[0-9a-f]+ . //; s/[[(].*//' | sort >"$folder/exported"
test -s "$folder/declared"
diff "$folder/declared" "$folder/exported" && echo "$(wc -l <"$folder/declared") functions, all exported and nothing else"
