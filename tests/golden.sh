#!/bin/sh
# Runs the program as tests/golden/*.sh say and compares everything that it prints, writes and returns with
# what was reviewed.
# usage: golden.sh PROGRAM [CASE...]     golden.sh --update PROGRAM [CASE...] takes what it sees as reviewed
set -u
update=""
[ "$1" = --update ] && update=yes && shift
program=$(realpath "$1") && shift
golden=$(cd "$(dirname "$0")/golden" && pwd)
[ $# -gt 0 ] || set -- "$golden"/*.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" && ln -s "$program" "$work/bin/loopwise"
PATH=$work/bin:$PATH
export PATH LC_ALL=C ASAN_OPTIONS=detect_leaks=1

failed=0
for case; do
    name=$(basename "$case" .sh)
    mkdir "$work/$name" && cp -r "$golden/files/." "$work/$name"
    (cd "$work/$name" && sh "$golden/$name.sh") >"$work/seen" 2>&1
    if [ -n "$update" ]; then
        cp "$work/seen" "$golden/$name.out"
    elif ! diff -u "$golden/$name.out" "$work/seen"; then
        failed=$((failed + 1))
        echo "$name: differs from what was reviewed"
    fi
done
echo "$# cases, $failed differ"
[ "$failed" = 0 ]
