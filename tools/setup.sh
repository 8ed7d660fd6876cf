#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Installs every build and test tool from Debian packages, or the packages that are named; does nothing
# when they are all there.
set -euo pipefail
# shellcheck source=tools/debian.sh
. "$(dirname "$0")/debian.sh"

packages=(
  build-essential cmake ninja-build git gdb python3 imagemagick zip
  googletest clang libclang-rt-dev clang-format clang-tidy cppcheck gcovr
  g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools
  wine wine32:i386 libwine:i386 wine64 xvfb socat
  fp-compiler-3.2.2 fp-utils-3.2.2 fp-units-rtl-3.2.2 fpc-source-3.2.2 mono-mcs reuse yamllint
  nsis msitools wixl osslsigncode faketime openssl python3-yaml python3-jsonschema libxml2-utils
  python3-sphinx python3-myst-parser python3-sphinxcontrib.htmlhelp
  fonts-wine fonts-dejavu-core fonts-dejavu-extra
)
[ $# -eq 0 ] || packages=("$@")

installed() {
  local package
  for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || return 1
  done
}

if installed; then exit 0; fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "setup: run as root or install sudo" >&2; exit 1; }
  as_root=(sudo)
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
log=$work/log

apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q "$@" >>"$log" 2>&1; }
install_all() { apt "$@" install -y --no-install-recommends "${packages[@]}"; }

say() { printf 'setup: %s\n' "$*"; }

# install_from <site> <suite...>: through a private source list; the machine's own lists stay as they are.
install_from() {
  local site=$1
  shift
  rm -rf "$work/lists"
  mkdir -p "$work/lists/partial"
  chmod -R a+rX "$work"
  printf '%s\n' "${@/#/$site }" | as_source_list >"$work/sources.list"
  local private=(-o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=-
    -o "Dir::State::Lists=$work/lists")
  apt "${private[@]}" update && install_all "${private[@]}"
}

# The i386 index of a suite can lag behind the mirror, first that of the security updates, then that of
# the others. Libraries of both architectures must have the same version, so such a suite is left out.
install_without_updates() {
  local release site
  release=$(debian_release)
  site=$(debian_sources | awk -v release="$release" '$2 == release { print $1; exit }')
  [ -n "$site" ] || { say "no source for Debian's $release is configured"; return 1; }
  say "a package index is out of step; trying again without security updates"
  install_from "$site" "$release" "$release-updates" && return
  say "trying again without any updates"
  install_from "$site" "$release"
}

say "installing ${#packages[@]} packages"
"${as_root[@]}" dpkg --add-architecture i386
if { apt update && install_all; } || install_without_updates; then
  say "done"
else
  tail -n 30 "$log" >&2
  say "the packages could not be installed" >&2
  exit 1
fi
