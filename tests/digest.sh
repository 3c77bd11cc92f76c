#!/bin/sh
# Builds the test of results that are the same to the last bit by two compilers with many options, and
# runs it.
set -eu
cd "$(dirname "$0")/.."
program=$(mktemp)
trap 'rm -f "$program"' EXIT
for compiler in g++ clang++; do
    for options in -O0 -O1 -O2 -O3 "-O3 -march=native"; do
        # shellcheck disable=SC2086  # a list of words on purpose
        $compiler -std=c++20 $options -ffp-contract=off -Iinclude -I. -Itests src/*/*.cpp \
            tests/support/chains.cpp tests/support/operations.cpp tests/sameness_test.cpp \
            -lgtest -lgtest_main -pthread -o "$program"
        "$program" --gtest_brief=1 | tail -1
        echo "$compiler $options: the same"
    done
done
