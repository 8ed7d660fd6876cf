#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes the installers of the folder that tools/package.sh packs: pvItems32-<version>-setup.exe and
# pvItems32-<version>.msi.
# Usage: tools/make_installers.sh <package folder> <version> <output folder>
set -euo pipefail
cd "$(dirname "$0")/.."

root=$(realpath "$1")
version=$2
mkdir -p "$3"
name=$(realpath "$3")/pvItems32-$version
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Of the two components, the examples have their folder, the programs made of it, and no more.
is_example='^examples/|/(fluxor_server\.dll|read_write\.exe)$'
# The scripts that register are for an unpacked package; installers do that themselves.
files() { (cd "$root" && find . -type f ! -iname '*register.cmd' -printf '%P\n' | LC_ALL=C sort); }
windows() { tr / '\\'; }

# file_lines: reads names and writes what puts the files in place, folder by folder.
file_lines() {
  local file folder last=
  while read -r file; do
    folder=$(dirname "/$file")
    [ "$folder" = "$last" ] || printf 'SetOutPath "$INSTDIR%s"\n' "${folder%/}" | windows
    last=$folder
    printf 'File "%s/%s"\n' "$root" "$file"
  done
}

removal_lines() {
  files | sed 's|.*|Delete "$INSTDIR/&"|' | windows
  (cd "$root" && find . -mindepth 1 -type d -printf '%P\n') | LC_ALL=C sort -r |
    sed 's|.*|RMDir "$INSTDIR/&"|' | windows
  echo 'RMDir "$INSTDIR"'
}

make_setup() {
  file_lines <"$scratch/library.list" >"$scratch/install_library.nsh"
  file_lines <"$scratch/examples.list" >"$scratch/install_examples.nsh"
  removal_lines >"$scratch/uninstall.nsh"
  makensis -V2 -WX "-DVERSION=$version" "-DROOT=$root" "-DLISTS=$scratch" \
    "-DOUTPUT=$name-setup.exe" installer/pvItems32.nsi
}

# frozen <command...>: the time of the packed files, which databases keep, stands still.
frozen() {
  TZ=UTC faketime -f "$(date -u -d "@$(stat -c %Y "$root/x86/pvItems32.dll")" '+%F %T')" "$@"
}

# The same files, the same identifier: that of this very database.
package_code() {
  { cat "$scratch/package.wxs"; (cd "$root" && files | xargs -d '\n' sha256sum); } |
    python3 -c 'import sys, uuid; print("{%s}" % str(uuid.uuid5(uuid.NAMESPACE_OID, sys.stdin.read())).upper())'
}

# wixl takes files from where it runs. What it has no words for comes afterwards: the root that depends on
# the scope, and that the library is always installed.
make_msi() {
  local msi=$name.msi
  tools/make_wxs.py "$root" "$version" "$scratch/library.list" "$scratch/examples.list" \
    "$scratch/package.wxs"
  (cd "$root" && frozen wixl --arch x64 --output "$msi" "$scratch/package.wxs")
  frozen msibuild "$msi" -s "pvItems32 $version" "the pvItems32 authors" 'x64;1033' "$(package_code)"
  frozen msibuild "$msi" -q 'UPDATE `Registry` SET `Root` = -1 WHERE `Root` = 4' \
    "UPDATE \`Feature\` SET \`Attributes\` = 16 WHERE \`Feature\` = 'Library'"
}

files | grep -v -E "$is_example" >"$scratch/library.list"
files | grep -E "$is_example" >"$scratch/examples.list" || true
make_setup
make_msi
