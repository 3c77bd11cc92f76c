#!/bin/sh
# Runs ./demo, ./check and the README's first program, of what is committed, on a Debian 12 that holds nothing but
# debootstrap's smallest choice. Needs root and debootstrap.
# usage: bare_machine.sh [FOLDER [COMMAND...]]   FOLDER keeps the bare system, and the used one with the clone
set -eu
source=$(git -C "$(dirname "$0")" rev-parse --show-toplevel)
folder=${1:-/var/tmp/bare_machine}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- './demo; ./check; sed -n "/^    cmake --preset/,/^$/p" README.md | sh -eux'
mkdir -p "$folder"
if [ ! -e "$folder/bare.done" ]; then
    rm -rf "$folder/bare"
    debootstrap --variant=minbase bookworm "$folder/bare"
    touch "$folder/bare.done"
fi
rm -rf --one-file-system "$folder/used"
cp -a "$folder/bare" "$folder/used"
git clone -q "$source" "$folder/used/root/libloopwise"

# Mounts and processes are in namespaces of their own, and go with the command however it ends.
# shellcheck disable=SC2016
unshare --mount --pid --fork --kill-child sh -euc '
    for name in dev sys; do mount --rbind "/$name" "$1/$name"; done
    mount -t proc proc "$1/proc"
    used=$1
    shift
    exec chroot "$used" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        ${http_proxy:+"http_proxy=$http_proxy"} \
        sh -euxc "cd /root/libloopwise; $*"' sh "$folder/used" "$@"
left=$(git -C "$folder/used/root/libloopwise" status --porcelain)
[ -z "$left" ] || { echo "These commands leave files that git shows: $left" >&2; exit 1; }
