#!/bin/sh
# Makes the manual pages loopwise.1.gz and loopwise-SUBCOMMAND.1.gz from what the program's --help says.
# usage: manual.sh PROGRAM VERSION CHANGELOG FOLDER
set -eu
program=$1 version=$2 changelog=$3 folder=$4
export LC_ALL=C
# Not of today: the same sources make the same pages.
date=$(date -d "$(sed -n 's/^ -- .*>  //p' "$changelog" | head -n 1)" +%F)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

page() { # page NAME SUMMARY SEE-ALSO < HELP
    cat >"$work/help"
    # help2man runs a program: this one has the help at hand, with the heading marked that is to be a section.
    printf '#!/bin/sh\nsed "s/^Exit status:$/*Exit status*/" "%s/help"\n' "$work" >"$work/$1"
    chmod +x "$work/$1"
    printf '[SEE ALSO]\n%s\n' "$3" >"$work/more"
    help2man --no-info --version-string="$version" --name="$2" --include="$work/more" "$work/$1" |
        sed "s/^\(\.TH [^ ]* \"1\"\) \"[^\"]*\"/\1 \"$date\"/" | gzip -9n >"$folder/$1.1.gz"
}

mkdir -p "$folder"
pages=""
for name in $("$program" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'); do
    pages="$pages${pages:+ (1),
}.BR loopwise-$name"
    summary=$("$program" "$name" --help | sed -n '1s/^./\l&/p')
    "$program" "$name" --help | page "loopwise-$name" "$summary" '.BR loopwise (1)'
done
"$program" --help | page loopwise "knots of protein backbones and other chains" "$pages (1)"
