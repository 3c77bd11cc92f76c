#!/bin/sh
# Installs the built library, moves what was installed to another folder and uses it there.
# usage: install.sh BUILD-FOLDER COMPILER LIBDIR VERSION
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
compiler=$2 # for consume.sh
libdir=$3
version=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder" "$build/install_manifest_runtime.txt" "$build/install_manifest_development.txt"' EXIT
. "$here/consume.sh"
command -v pkg-config >/dev/null || skip "pkg-config is missing"

install_component() {
    cmake --install "$build" --prefix "$folder/first" --component "$1" >"$folder/log" || { cat "$folder/log"; exit 1; }
}
install_component runtime
extra=$(cd "$folder/first" && find . ! -type d ! -path './share/doc/libloopwise1/*' ! -path "./$libdir/libloopwise.so.1*")
[ -z "$extra" ] || fail "the runtime component holds $extra"
[ "$(readlink "$folder/first/$libdir/libloopwise.so.1")" = "libloopwise.so.$version" ] ||
    fail "libloopwise.so.1 is not a link to the library"
install_component development
[ "$(readlink "$folder/first/$libdir/libloopwise.so")" = libloopwise.so.1 ] || fail "libloopwise.so is not a link"
readelf -d "$folder/first/$libdir/libloopwise.so" | grep -q 'SONAME.*\[libloopwise\.so\.1\]' || fail "the SONAME is wrong"

mkdir "$folder/second"
mv "$folder/first" "$folder/second/moved"
if grep -rlF -e "$folder/first" -e "$build" "$folder/second"; then
    fail "these installed files name a folder of the build"
fi
with_cmake "$folder/second/moved" "$folder/second/moved/$libdir"
with_pkg_config "$folder/second/moved/$libdir"
