#!/bin/sh
# Makes the Debian packages, looks into them, unpacks them into an empty root and uses the library there.
# usage: debian.sh SOURCE-FOLDER COMPILER VERSION
set -eu
here=$(cd "$(dirname "$0")" && pwd)
source=$1
compiler=$2
version=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
. "$here/consume.sh"
for tool in dpkg-deb dpkg-shlibdeps pkg-config; do
    command -v "$tool" >/dev/null || skip "$tool is missing"
done

(cd "$source" && cmake --preset package -B "$folder/build" -DCMAKE_CXX_COMPILER="$compiler" &&
    cmake --build "$folder/build" -j 1 && cd "$folder/build" && cpack) >"$folder/log" 2>&1 ||
    { cat "$folder/log"; fail "cpack"; }
machine=$(dpkg --print-architecture)
runtime=$folder/build/libloopwise1_${version}_$machine.deb
development=$folder/build/libloopwise-dev_${version}_$machine.deb
libdir=usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH 2>/dev/null)

expect() { # expect WHAT FILE: compares the file with standard input
    diff - "$2" || fail "$1 is not as expected (<), but as (>)"
}
files() { dpkg-deb --fsys-tarfile "$1" | tar -t | grep -v '/$' | LC_ALL=C sort >"$folder/files"; }
files "$runtime"
expect "what libloopwise1 holds" "$folder/files" <<LIST
./$libdir/libloopwise.so.1
./$libdir/libloopwise.so.$version
./usr/share/doc/libloopwise1/changelog.gz
./usr/share/doc/libloopwise1/copyright
LIST
files "$development"
expect "what libloopwise-dev holds" "$folder/files" <<LIST
./usr/include/libloopwise.h
./$libdir/cmake/loopwise/loopwise-config-release.cmake
./$libdir/cmake/loopwise/loopwise-config-version.cmake
./$libdir/cmake/loopwise/loopwise-config.cmake
./$libdir/libloopwise.so
./$libdir/pkgconfig/loopwise.pc
./usr/share/doc/libloopwise-dev/changelog.gz
./usr/share/doc/libloopwise-dev/copyright
LIST
dpkg-deb -f "$development" Package Version Section Depends >"$folder/control"
expect "the control file of libloopwise-dev" "$folder/control" <<LIST
Package: libloopwise-dev
Version: $version
Section: libdevel
Depends: libloopwise1 (= $version)
LIST
dpkg-deb -f "$runtime" Package Version Section Maintainer >"$folder/control"
expect "the control file of libloopwise1" "$folder/control" <<LIST
Package: libloopwise1
Version: $version
Section: libs
Maintainer: The libloopwise authors <maintainers@loopwise.example>
LIST
dpkg-deb -f "$runtime" Depends | grep -q 'libc6 (>= .*libstdc++6 (>= ' || fail "libloopwise1 lacks dependencies"
dpkg-deb -e "$runtime" "$folder/control.d"
cat "$folder/control.d/shlibs" "$folder/control.d/triggers" >"$folder/control"
expect "shlibs or the trigger of libloopwise1" "$folder/control" <<LIST
libloopwise 1 libloopwise1 (>= ${version%.*})
activate-noawait ldconfig
LIST

dpkg-deb -x "$runtime" "$folder/root"
dpkg-deb -x "$development" "$folder/root"
readelf -S "$folder/root/$libdir/libloopwise.so" | grep -q debug_info && fail "the library is not stripped"
readelf -d "$folder/root/$libdir/libloopwise.so" | grep -q 'BIND_NOW\|FLAGS_1.*NOW' || fail "the library is not hardened"
if grep -rlF -e "$folder" -e "$source" "$folder/root"; then
    fail "these packaged files name a folder of the build"
fi
with_cmake "$folder/root/usr" "$folder/root/$libdir"
with_pkg_config "$folder/root/$libdir"
