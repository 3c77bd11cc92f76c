#!/bin/sh
# The program in the README is examples/first_steps.cpp to the letter, as is the job script in docs/scaling.md; the
# links of the documents lead somewhere; every exported function has an example; the reference comes out without a
# warning, where doxygen is there to make it.
# usage: readme.sh TOUR, from the root of the repository
set -eu
# shellcheck disable=SC2016  # the backquotes are Markdown's
sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d' | diff - examples/first_steps.cpp
sed -n '/^#!\/bin\/sh$/,/^```$/p' docs/scaling.md | sed '$d' | diff - examples/scaling/survey.sbatch
for document in README.md CONTRIBUTING.md docs/*.md; do
    grep -o '](\([^)#]*\))' "$document" | sed 's/](//; s/)//' | grep -v '^http' | while read -r link; do
        [ -e "$(dirname "$document")/$link" ] || { echo "$document: no $link"; exit 1; }
    done
done
grep '^LOOPWISE_API' include/libloopwise.h | sed -E 's/\(.*//; s/.*[ *&>]//' | while read -r function; do
    grep -rqw "$function" examples || { echo "no example uses $function"; exit 1; }
done
"$1" examples/data/trefoil.txt examples/data/figure_eight.txt | grep -q 'a quarter circle: 10 atoms'
if command -v doxygen >/dev/null; then
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    { cat docs/Doxyfile; echo "OUTPUT_DIRECTORY = $folder"; } | doxygen - >"$folder/log" 2>&1 ||
        { cat "$folder/log"; exit 1; }
fi
