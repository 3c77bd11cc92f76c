#!/bin/sh
# The program in the README is examples/first_steps.cpp to the letter, and does what the README says; the links
# of the documents lead somewhere; the reference comes out without a warning, where doxygen is there to make it.
# usage: readme.sh FIRST_STEPS, from the root of the repository
set -eu
sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d' | diff - examples/first_steps.cpp
"$1" | grep -q "^6 beads hold the loop's entanglement:$"
for document in README.md CONTRIBUTING.md docs/*.md; do
    grep -o '](\([^)#]*\))' "$document" | sed 's/](//; s/)//' | grep -v '^http' | while read -r link; do
        [ -e "$(dirname "$document")/$link" ] || { echo "$document: no $link"; exit 1; }
    done
done
# Every exported function is used in an example, and the tour of them goes to its end.
for function in $(grep '^LOOPWISE_API' include/libloopwise.h | sed -E 's/\(.*//; s/.*[ *&>]//'); do
    grep -rqw "$function" examples || { echo "no example uses $function"; exit 1; }
done
"$(dirname "$1")/tour" examples/data/trefoil.txt examples/data/figure_eight.txt | grep -q 'a quarter circle: 10 atoms'
if command -v doxygen >/dev/null; then
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    { cat docs/Doxyfile; echo "OUTPUT_DIRECTORY = $folder"; } | doxygen - >"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
fi
