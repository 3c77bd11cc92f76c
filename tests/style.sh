#!/bin/sh
# The style of what git tracks: silent where all is well.
#   style.sh                 clang-format, flake8 and shellcheck, and lines as long as .editorconfig allows
#   style.sh tidy BUILD      clang-tidy on the rooms that changed since origin/main, or in the last commit
# Versions of clang-format and clang-tidy disagree: 14 decides, another one is not asked.
set -u
cd "$(dirname "$0")/.." || exit 1
failed=0
complain() { # complain WHAT FINDINGS
    [ -z "$2" ] && return
    echo "style: $1" >&2
    echo "$2" | cut -c1-200 | head -20 >&2
    failed=1
}
for tool in clang-format clang-tidy flake8 shellcheck; do
    command -v $tool >/dev/null || complain "missing" "$tool"
done
tracked() { git ls-files -- "$@" | grep -vE '(^|/)(data|corpus|golden|abi|pictures)/'; }

decides() { # decides TOOL
    "$1" --version 2>/dev/null | grep -q 'version 14\.' || { echo "style: $1 is not version 14, skipped" >&2; false; }
}

if [ "${1-}" = tidy ]; then
    decides clang-tidy || exit 0
    since=$(git merge-base HEAD origin/main 2>/dev/null)
    [ "$since" != "$(git rev-parse HEAD)" ] || since=
    rooms=$(git diff --name-only "${since:-HEAD~1}" -- '*.cpp' '*.hpp' 2>/dev/null |
        grep -vE '^(tests|fuzz|bench|examples)/|/tests/' | xargs -r -n 1 dirname | sort -u)
    files=$(for room in $rooms; do git ls-files "$room/*.cpp" ":!$room/*/*"; done)
    complain "clang-tidy" "$(for file in $files; do
        grep -qF "\"file\": \"$PWD/$file\"" "$2/compile_commands.json" && echo "$file"
    done | xargs -r -P "$(nproc)" -n 2 clang-tidy --quiet -p "$2" 2>/dev/null | grep -E 'warning:|error:')"
    exit $failed
fi

decides clang-format && complain "clang-format -i mends these" \
    "$(tracked '*.cpp' '*.hpp' '*.h' '*.inl' | xargs clang-format --dry-run 2>&1 | grep 'warning:')"
complain "flake8" "$(tracked '*.py' tests/browser | xargs flake8)"
complain "shellcheck" "$(tracked '*.sh' demo check .ci/run bench/against | xargs shellcheck -f gcc -x)"
# Newer standard libraries no longer include it by the way.
algorithms='std::(clamp|copy|count(_if)?|fill|find(_if)?|minmax|m(ax|in)(_element)?|reverse|rotate|(stable_)?sort)'
complain "<algorithm> is not included" "$(tracked '*.cpp' '*.hpp' | xargs grep -lE "$algorithms\(" |
    xargs grep -L '<algorithm>' | while read -r file; do grep -qs '<algorithm>' "${file%.*}.hpp" || echo "$file"; done)"
complain "lines of more than 120 columns" \
    "$(tracked | grep -vE '\.(md|json)$|exports\.map$' | xargs grep -nE '^.{121,}$' /dev/null)"
exit $failed
