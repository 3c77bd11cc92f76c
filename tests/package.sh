#!/bin/sh
# Installs what is built, makes the Debian packages, looks into them and unpacks them; in both places the programs run,
# and the README's first program builds and runs through CMake and through pkg-config.
# usage: package.sh SOURCE-FOLDER BUILD-FOLDER LIBDIR COMPILER VERSION PYTHON
set -eu
source=$1 build=$2 libdir=$3 compiler=$4 version=$5 python=$6
for tool in dpkg-shlibdeps file pkg-config readelf; do
    command -v "$tool" >/dev/null || { echo "Skipped: $tool is missing" >&2; exit 77; }
done
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fail() { echo "Failed: $*" >&2; exit 1; }
quietly() { "$@" >"$folder/log" 2>&1 || { cat "$folder/log"; fail "$*"; }; }

first_steps() { # first_steps PROGRAM LIBRARY-FOLDER [LD_LIBRARY_PATH]
    LD_LIBRARY_PATH=${3-} ldd "$1" | grep -qF "$2/libloopwise.so.1 " || fail "$1 runs with another library"
    (cd "$source" && LD_LIBRARY_PATH=${3-} "$1") |
        grep -q "^6 beads hold the loop's entanglement:$" || fail "$1 says otherwise"
}
imports() { # imports PYTHON FOLDER
    quietly env PYTHONDONTWRITEBYTECODE=1 PYTHONPATH="$2" "$1" -c "
import loopwise as lw
assert lw.__file__.startswith('$2/') and lw.survey(lw.read('$source/examples/data/trefoil.txt')).knot == '-3_1'"
}
use() { # use PREFIX LIBDIR
    ! grep -rlF -e "$build" -e "$source" -e "$folder" "$1" || fail "these files name a folder of the build"
    mkdir -p "$folder/consumer"
    cat >"$folder/consumer/CMakeLists.txt" <<LIST
cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
find_package(loopwise 1 REQUIRED)
add_executable(first_steps "$source/examples/first_steps.cpp")
target_link_libraries(first_steps PRIVATE loopwise::loopwise)
LIST
    quietly cmake -S "$folder/consumer" -B "$1/consumer" -G Ninja \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$1"
    quietly cmake --build "$1/consumer"
    first_steps "$1/consumer/first_steps" "$1/$2"
    export PKG_CONFIG_LIBDIR="$1/$2/pkgconfig"
    quietly pkg-config --validate loopwise
    # shellcheck disable=SC2046  # a list of words on purpose
    quietly "$compiler" -std=c++17 -Wall -Wextra -Werror "$source/examples/first_steps.cpp" -o "$1/first_steps" \
        $(pkg-config --cflags --libs "loopwise >= $version" 'loopwise < 2')
    first_steps "$1/first_steps" "$1/$2" "$1/$2"
    for packages in "$1"/lib/python3*/*-packages; do
        imports "$python" "$packages"
    done
    for program in "$1"/bin/*; do
        [ ! -e "$program" ] || quietly "$program" --help
    done
}

quietly cmake --install "$build" --prefix "$folder/first"
mkdir "$folder/second"
mv "$folder/first" "$folder/second/moved"
use "$folder/second/moved" "$libdir"

suffix=$("$python" -c 'import sysconfig; print(sysconfig.get_config_var("EXT_SUFFIX"))')
# What is packaged is what was built, for Debian's prefix.
prefix=$(sed -n 's/^CMAKE_INSTALL_PREFIX:PATH=//p' "$build/CMakeCache.txt")
trap 'cd "$source"; rm -rf "$folder"; cmake -S "$source" -B "$build" -DCMAKE_INSTALL_PREFIX="$prefix" >/dev/null' EXIT
quietly cmake -S "$source" -B "$build" -DCMAKE_INSTALL_PREFIX=/usr
mkdir "$folder/packages"
cd "$folder/packages"
quietly cpack --config "$build/CPackConfig.cmake" -B "$folder/packages"
libdir=lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)
for package in libloopwise1 libloopwise-dev loopwise-tools python3-loopwise; do
    file=${package}_${version}_$(dpkg --print-architecture).deb
    dpkg-deb -x "$file" "$folder/root"
    dpkg-deb -f "$file" Package Version Section Maintainer Depends | sed -E 's/ \((>=|<<) [0-9.:]+\)/ (\1)/g'
    dpkg-deb -c "$file" | awk '!/\/$/ { print $1, $2, $6, $7, $8 }' |
        sed 's/ *$//; /\.pyi\{0,1\}$/d' | LC_ALL=C sort -k 3
    [ "$package" != libloopwise1 ] || dpkg-deb -I "$file" shlibs triggers
done >"$folder/seen"
diff - "$folder/seen" <<LIST || fail "the packages are not as expected (<), but as (>)"
Package: libloopwise1
Version: $version
Section: libs
Maintainer: The libloopwise authors <maintainers@loopwise.example>
Depends: libc6 (>=), libgcc-s1 (>=), libstdc++6 (>=)
lrwxrwxrwx root/root ./usr/$libdir/libloopwise.so.1 -> libloopwise.so.$version
-rw-r--r-- root/root ./usr/$libdir/libloopwise.so.$version
-rw-r--r-- root/root ./usr/share/doc/libloopwise1/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/libloopwise1/copyright
libloopwise 1 libloopwise1 (>= ${version%.*})
activate-noawait ldconfig
Package: libloopwise-dev
Version: $version
Section: libdevel
Maintainer: The libloopwise authors <maintainers@loopwise.example>
Depends: libloopwise1 (= $version)
-rw-r--r-- root/root ./usr/include/libloopwise.h
-rw-r--r-- root/root ./usr/$libdir/cmake/loopwise/loopwise-config-release.cmake
-rw-r--r-- root/root ./usr/$libdir/cmake/loopwise/loopwise-config-version.cmake
-rw-r--r-- root/root ./usr/$libdir/cmake/loopwise/loopwise-config.cmake
lrwxrwxrwx root/root ./usr/$libdir/libloopwise.so -> libloopwise.so.1
-rw-r--r-- root/root ./usr/$libdir/pkgconfig/loopwise.pc
-rw-r--r-- root/root ./usr/share/doc/libloopwise-dev/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/libloopwise-dev/copyright
Package: loopwise-tools
Version: $version
Section: science
Maintainer: The libloopwise authors <maintainers@loopwise.example>
Depends: libc6 (>=), libgcc-s1 (>=), libstdc++6 (>=), zlib1g (>=)
-rwxr-xr-x root/root ./usr/bin/loopwise
-rw-r--r-- root/root ./usr/share/bash-completion/completions/loopwise
-rw-r--r-- root/root ./usr/share/doc/loopwise-tools/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/loopwise-tools/copyright
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-check.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-close.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-fingerprint.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-knot.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-reduce.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise-survey.1.gz
-rw-r--r-- root/root ./usr/share/man/man1/loopwise.1.gz
Package: python3-loopwise
Version: $version
Section: python
Maintainer: The libloopwise authors <maintainers@loopwise.example>
Depends: python3 (>=), python3 (<<), python3-numpy, libc6 (>=), libgcc-s1 (>=), libstdc++6 (>=), zlib1g (>=)
-rw-r--r-- root/root ./usr/lib/python3/dist-packages/loopwise/_core$suffix
-rw-r--r-- root/root ./usr/lib/python3/dist-packages/loopwise/py.typed
-rw-r--r-- root/root ./usr/share/doc/python3-loopwise/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/python3-loopwise/copyright
LIST
library=$folder/root/usr/$libdir/libloopwise.so
! readelf -S "$library" | grep -q debug_info || fail "the library is not stripped"
readelf -d "$library" | grep -q 'BIND_NOW\|FLAGS_1.*NOW' || fail "the library is not hardened"
use "$folder/root/usr" "$libdir"

# The module once more, by pip: a build of its own, for which .ci/run has the time.
[ -n "${LOOPWISE_TRY_PIP-}" ] || exit 0
# A virtual environment that sees Debian's setuptools and pybind11. Building leaves files in the source.
mkdir "$folder/source"
(cd "$source" && tar -cf - --exclude=./build --exclude=./.git .) | tar -xf - -C "$folder/source"
quietly "$python" -m venv --system-site-packages "$folder/venv"
quietly "$folder/venv/bin/pip" install --no-build-isolation --no-deps --no-index "$folder/source"
packages=$("$folder/venv/bin/python" -c 'import sysconfig; print(sysconfig.get_path("platlib"))')
imports "$folder/venv/bin/python" "$packages"
