#!/bin/bash
# The manual pages and bash's completion know the subcommands and options of --help, all of them and no others.
# usage: help.sh PROGRAM MANUAL-FOLDER COMPLETION
# shellcheck disable=SC1010,SC1090,SC2012,SC2086  # words that are none of the shell; a name that may be empty
set -eu
program=$(realpath "$1") manual=$(realpath "$2") completion=$(realpath "$3")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/files" "$folder/files/in"
touch "$folder/files/a b.pdb" "$folder/files/c.txt"
cd "$folder/files"
. "$completion"

complete_last() { # complete_last WORD...: what bash would offer for the last word
    COMP_WORDS=("$program" "$@") COMP_CWORD=$#
    _loopwise "$program" "${COMP_WORDS[$#]}" "${COMP_WORDS[$# - 1]}"
    [ ${#COMPREPLY[@]} = 0 ] || printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort
}
offers() { # offers EXPECTED WORD...
    local expected=$1
    shift
    diff <(printf %b "$expected") <(complete_last "$@") || { echo "Failed: completing $*"; exit 1; }
}

subcommands=$("$program" --help | sed -n '/^Subcommands/,/^$/s/^  \([a-z]*\) .*/\1/p')
[ "$(echo "$subcommands" | wc -l)" -ge 6 ]
[ "$(ls "$manual" | wc -l)" = "$(echo "loopwise $subcommands" | wc -w)" ]
for name in "" $subcommands; do
    "$program" $name --help | sed -nE 's/^  (-.*[^ ])   .*/\1/p' | LC_ALL=C sort >"$folder/options"
    grep -qx -e '-h, --help' "$folder/options"
    zcat "$manual/loopwise${name:+-$name}.1.gz" >"$folder/page"
    sed -n '/^\.TP/{n;/^\\fB\\-/p}' "$folder/page" | sed 's/\\f[BIR]//g; s/\\-/-/g' | LC_ALL=C sort |
        diff "$folder/options" - || { echo "Failed: the page of loopwise $name"; exit 1; }
    ! command -v man >/dev/null || [ -z "$(man --warnings -l "$folder/page" 2>&1 >/dev/null)" ]
    diff <(grep -oE -e '--[a-z-]+' "$folder/options" | LC_ALL=C sort) <(complete_last $name --) ||
        { echo "Failed: completing loopwise $name --"; exit 1; }
done

offers "$(echo "$subcommands" | LC_ALL=C sort)\n" ''
offers 'fingerprint\n' fi
offers '--no-knots\n' survey c.txt --no-k
files='a b.pdb\nc.txt\nin\n'
offers "$files" survey ''
offers 'c.txt\n' survey c.txt c
offers "$files" survey --json ''
offers "$files" close -o ''
offers 'a b.pdb\n' fingerprint --svg = a
offers 'all\n' check --model ''
offers '' survey --count ''
offers '' weave ''
methods=$("$program" survey --method x c.txt 2>&1 | sed 's/.*choose from //; s/ (see.*//; s/, /\n/g' |
    LC_ALL=C sort | sed -z 's/\n/\\n/g')
[ "$methods" != "${methods#*point}" ]
offers "$methods" survey --method ''
offers "$methods" close --method =
offers 'two-points\n' close --method = tw
