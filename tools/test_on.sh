#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs "./run test", or another command, of the committed tree on another Debian release. Its system
# lies in build/chroot-<release>, takes packages from the sources of this machine and is there for the
# next time. Needs root.
# Usage: tools/test_on.sh <release> [arguments of "./run test" | setup | build | package | demo [option...]]
# The suite that is named like a command is "test package".
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=tools/debian.sh
. tools/debian.sh

fail() { printf 'test-on: %s\n' "$*" >&2; exit 2; }

[ $# -gt 0 ] || fail "name a Debian release, such as trixie"
[ "$(id -u)" -eq 0 ] || fail "run as root"
# Mounts and processes are seen by this command alone, and end with it.
if [ -z "${PV_TEST_ON_ALONE:-}" ]; then
  exec env PV_TEST_ON_ALONE=1 unshare --mount --pid --fork --kill-child "tools/test_on.sh" "$@"
fi

release=$1
shift
case "${1:-}" in
  test | setup | build | package | demo) ;;
  *) set -- test "$@" ;;
esac
root=$PWD/build/chroot-$release
tree=/srv/pvItems32

say() { printf '== %s\n' "$*"; }

# The machine's sources, translated to the release.
sources() {
  debian_sources | sed "s/ $(debian_release)/ $release/" | grep -E " $release(-updates|-security)?\$"
}

make_system() {
  [ ! -e "$root/.ready" ] || return 0
  say "making a system of Debian's $release"
  local site
  site=$(sources | awk -v release="$release" '$2 == release { print $1; exit }')
  [ -n "$site" ] || fail "this machine knows no source of $release: run apt-get update"
  rm -rf --one-file-system "$root"
  mkdir -p "$root"
  debootstrap --variant=minbase --keyring="$debian_keyring" "$release" "$root" "$site" \
    >"$root.log" 2>&1 || { tail -n 20 "$root.log" >&2; fail "debootstrap failed"; }
  touch "$root/.ready"
}

# What the machine reaches its sources with: names, certificates, proxies.
share_network() {
  sources | as_source_list >"$root/etc/apt/sources.list"
  apt-config dump | grep -E '^Acquire::(https?|ftp|Retries|Check-)' >"$root/etc/apt/apt.conf.d/80host" || true
  cp /etc/resolv.conf "$root/etc/resolv.conf"
  local certificates=/etc/ssl/certs/ca-certificates.crt
  [ ! -e $certificates ] || install -D -m 644 $certificates "$root$certificates"
}

copy_tree() {
  git diff --quiet HEAD || say "leaving aside what is not committed"
  git init -q "$root$tree"
  git -C "$root$tree" fetch -q --depth 1 "file://$PWD" HEAD
  git -C "$root$tree" reset -q --hard FETCH_HEAD
}

run_there() {
  local environment
  mapfile -t environment < <(env | grep -E '^(TERM|https?_proxy|no_proxy|PV_LOCALE)=')
  mount -t proc proc "$root/proc"
  mount --rbind /dev "$root/dev"
  env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "${environment[@]}" \
    chroot "$root" "$tree/run" "$@" </dev/null
}

mkdir -p build
exec {lock}>"$root.lock"
flock --nonblock "$lock" || fail "another command is at work on $release"
tools/setup.sh debootstrap
make_system
share_network
copy_tree
say "./run $* on $release"
run_there "$@"
