#!/bin/sh
# The style of what git tracks: silent where all is well.
#   clang-format on C++, flake8 on Python, shellcheck on scripts, lines as long as .editorconfig allows,
#   and clang-tidy on the rooms that changed since a revision (default: where this branch left origin/main,
#   or the commit before the last).
# usage: style.sh [tidy BUILD-FOLDER [REVISION]]
set -eu
cd "$(dirname "$0")/.."
failed=0
fail() { failed=1; echo "style: $*" >&2; }
tracked() { git ls-files -- "$@" | grep -vE '(^|/)(data|corpus|golden|abi|pictures)/' || true; }

if [ "${1-}" = tidy ]; then
    build=$2 since=${3-}
    [ -n "$since" ] || since=$(git merge-base HEAD origin/main 2>/dev/null || true)
    [ -n "$since" ] && [ "$since" != "$(git rev-parse HEAD)" ] || since=$(git rev-parse -q --verify HEAD~1 || git rev-parse HEAD)
    rooms=$(git diff --name-only "$since" -- '*.cpp' '*.hpp' | grep -vE '^(tests|fuzz|bench|examples)/|/tests/' |
        xargs -r -n 1 dirname | sort -u)
    for room in $rooms; do git ls-files "$room/*.cpp" ":!$room/*/*"; done | sort -u >"$build/to_tidy"
    known=$(sed -n 's/^  "file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json")
    while read -r file; do
        case "$known" in *"$PWD/$file"*) echo "$file" ;; esac
    done <"$build/to_tidy" | xargs -r -P "$(nproc)" -n 2 clang-tidy --quiet -p "$build" 2>/dev/null |
        grep -E 'warning:|error:' && fail "clang-tidy has found these"
    exit $failed
fi

tracked '*.cpp' '*.hpp' '*.h' '*.inl' | xargs clang-format --dry-run -Werror 2>&1 | grep -E 'error:' | head &&
    fail "clang-format -i mends these"
tracked '*.py' tests/browser | xargs python3 -m flake8 --max-line-length 110 || fail "flake8 has found these"
tracked '*.sh' demo check .ci/run bench/against | xargs shellcheck -x || fail "shellcheck has found these"
tracked '*' | grep -v '\.md$' | xargs grep -nE '^.{111,}$' /dev/null | cut -c1-80 | head && fail "these lines are too long"
exit $failed
