# shellcheck shell=sh disable=SC2154
# Sourced by the tests in this folder: builds and runs the consumer against an installed library.
# Needs: $here, $folder (a temporary one) and $compiler.
skip() {
    echo "Skipped: $*" >&2
    exit 77
}
fail() {
    echo "Failed: $*" >&2
    exit 1
}

run_consumer() { # run_consumer HOW PROGRAM [LIBRARY-FOLDER]
    said=$(LD_LIBRARY_PATH=${3-} "$2" | tail -n 1) || fail "the consumer built by $1 does not run"
    [ "$said" = "7 beads closed, 3 left" ] || fail "the consumer built by $1 says: $said"
    echo "$1: $said"
}

with_cmake() { # with_cmake PREFIX LIBRARY-FOLDER
    cmake -S "$here" -B "$folder/by_cmake" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF -DCMAKE_PREFIX_PATH="$1" >"$folder/log" 2>&1 &&
        cmake --build "$folder/by_cmake" >>"$folder/log" 2>&1 ||
        { cat "$folder/log"; fail "the consumer does not build through CMake"; }
    grep -q "loopwise_DIR:PATH=$2/cmake/loopwise" "$folder/by_cmake/CMakeCache.txt" ||
        fail "CMake found another package: $(grep loopwise_DIR "$folder/by_cmake/CMakeCache.txt")"
    run_consumer CMake "$folder/by_cmake/consumer"
}

with_pkg_config() { # with_pkg_config LIBRARY-FOLDER
    flags=$(PKG_CONFIG_LIBDIR="$1/pkgconfig" pkg-config --cflags --libs "loopwise >= 1" 'loopwise < 2') ||
        fail "pkg-config does not find loopwise"
    # shellcheck disable=SC2086  # a list of words on purpose
    "$compiler" -std=c++17 -Wall -Wextra -Werror "$here/main.cpp" $flags -o "$folder/by_hand" ||
        fail "the consumer does not build through pkg-config: $flags"
    run_consumer pkg-config "$folder/by_hand" "$1"
}
